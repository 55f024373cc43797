#include "adapters/liggghts/command_line.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/numbers.h"

#include <cmath>
#include <functional>
#include <map>

namespace liggghts {
namespace {

constexpr double MostTimeSteps = 10000.0;
constexpr double MostProcessors = 1024.0;

[[noreturn]] void refuse(const std::string& sentence)
{
    throw CAdapterError(CAdapterError::BadCommandLine, sentence);
}

double numberOf(const std::string& option, const std::string& text)
{
    const std::optional<double> number = numberFrom(text);
    if (!number || *number < 0.0) {
        refuse("The value \"" + text + "\" of " + option + " is not a number from 0.");
    }
    return *number;
}

/// How many of the words behind an option belong to it.
enum class EValues { None, One, AllUpToNextOption };

struct SOption
{
    EValues values;
    std::function<void(SCommandLine&, const std::string& option, const std::string& value)> take;
};

void takeNothing(SCommandLine& line, const std::string& option, const std::string& /*value*/)
{
    line.withoutEffect.push_back(option);
}

SOption numberInto(double SCommandLine::*member)
{
    return {
        EValues::One,
        [member](SCommandLine& line, const std::string& option, const std::string& value) {
            line.*member = numberOf(option, value);
        },
    };
}

SOption pathInto(std::filesystem::path SCommandLine::*member)
{
    return {
        EValues::One,
        [member](SCommandLine& line, const std::string&, const std::string& value) {
            line.*member = value;
        },
    };
}

void takeProcessors(SCommandLine& line, const std::string& option, const std::string& value)
{
    const double number = numberOf(option, value);
    if (number != std::floor(number) || number < 1.0 || number > MostProcessors) {
        refuse("The value " + value + " of " + option + " is not a whole number from 1 to 1024.");
    }
    line.processors = static_cast<unsigned>(number);
}

void takeRewind(SCommandLine& line, const std::string& /*option*/, const std::string& /*value*/)
{
    line.rewind = true;
}

void takeCompression(SCommandLine& line, const std::string& option, const std::string& value)
{
    line.compress = numberOf(option, value) != 0.0;
}

const std::map<std::string, SOption>& knownOptions()
{
    static const std::map<std::string, SOption> options{
        {"-i", pathInto(&SCommandLine::deck)},
        {"-e", pathInto(&SCommandLine::exportSettings)},
        {"-c", {EValues::None, takeNothing}},
        {"-r", numberInto(&SCommandLine::totalTime)},
        {"-w", numberInto(&SCommandLine::saveInterval)},
        {"-g", {EValues::One, takeNothing}},
        {"-t", numberInto(&SCommandLine::timeStep)},
        {"-p", {EValues::One, takeProcessors}},
        {"-E", {EValues::One, takeNothing}},
        {"-D", {EValues::AllUpToNextOption, takeNothing}},
        {"-R", {EValues::None, takeRewind}},
        {"--particle-properties", {EValues::None, takeNothing}},
        {"-n", {EValues::One, takeNothing}},
        {"--dyn", {EValues::One, takeNothing}},
        {"--dyn-interval", {EValues::One, takeNothing}},
        {"--dyn-check", {EValues::One, takeNothing}},
        {"--dyn-disp", {EValues::One, takeNothing}},
        {"--gpu-split", {EValues::One, takeNothing}},
        {"--simExport", {EValues::None, takeNothing}},
        {"--cs", {EValues::None, takeNothing}},
        {"--auto-grid", {EValues::None, takeNothing}},
        {"--wait", {EValues::None, takeNothing}},
        {"--compress-data", {EValues::One, takeCompression}},
        {"--sp", {EValues::One, takeNothing}},
        {"--acd", {EValues::One, takeNothing}}};
    return options;
}

bool isOption(const std::string& word)
{
    return knownOptions().count(word) != 0;
}

/// Returns the place behind the option and its values.
std::size_t takeOption(SCommandLine& line, const std::vector<std::string>& words, std::size_t at)
{
    const std::string& name = words[at];
    const auto known = knownOptions().find(name);
    if (known == knownOptions().end()) {
        refuse("The option \"" + name + "\" is not known.");
    }
    std::size_t next = at + 1;
    std::string value;
    if (known->second.values == EValues::One) {
        if (next == words.size() || isOption(words[next])) {
            refuse("The option " + name + " needs a value.");
        }
        value = words[next++];
    }
    while (known->second.values == EValues::AllUpToNextOption && next < words.size() &&
           !isOption(words[next])) {
        ++next;
    }
    known->second.take(line, name, value);
    return next;
}

void checkTogether(const SCommandLine& line)
{
    if (line.deck.extension() != ".zek") {
        refuse("No deck was given: name a .zek file behind -i.");
    }
    if (line.totalTime <= 0.0) {
        refuse("The total time behind -r must be above 0.");
    }
    if (line.saveInterval > 0.0 && line.totalTime / line.saveInterval > MostTimeSteps) {
        refuse("The save interval behind -w asks for more than 10000 time steps.");
    }
}

} // namespace

SCommandLine parseCommandLine(const std::vector<std::string>& words)
{
    SCommandLine line;
    for (std::size_t at = 0; at < words.size();) {
        at = takeOption(line, words, at);
    }
    checkTogether(line);
    return line;
}

std::filesystem::path besideDeck(const std::filesystem::path& deck, const std::string& ending)
{
    return deck.parent_path() / (deck.stem().string() + ending);
}

std::filesystem::path dataFolderOf(const std::filesystem::path& deck)
{
    return besideDeck(deck, "_data");
}

} // namespace liggghts
