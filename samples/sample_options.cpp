#include "samples/sample_options.h"

#include "samples/sample_error.h"

#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>

namespace {

constexpr double MostTimeSteps = 10000.0;

[[noreturn]] void refuse(const std::string& sentence)
{
    throw CSampleError(CSampleError::BadCommandLine, sentence);
}

double numberOf(const std::string& option, const std::string& text)
{
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(number))
        refuse("The value \"" + text + "\" of " + option + " is not a number.");
    if (number < 0.0)
        refuse("The value " + text + " of " + option + " is below 0.");
    return number;
}

int integerOf(const std::string& option, const std::string& text, int least, int most)
{
    const double number = numberOf(option, text);
    if (number != std::floor(number) || number < least || number > most)
        refuse("The value " + text + " of " + option + " is not a whole number from " +
               std::to_string(least) + " to " + std::to_string(most) + ".");
    return static_cast<int>(number);
}

/// How many of the words behind an option belong to it.
enum EValues { NoValue, OneValue, AllUpToNextOption };

struct SOption
{
    EValues values;
    std::function<void(SSampleOptions&, const std::string& option, const std::string& value)> take;
};

void takeNothing(SSampleOptions& options, const std::string& option, const std::string&)
{
    options.withoutEffect.push_back(option);
}

void takeNumber(SSampleOptions& options, const std::string& option, const std::string& value)
{
    numberOf(option, value);
    options.withoutEffect.push_back(option);
}

SOption numberInto(double SSampleOptions::*member)
{
    return {OneValue,
            [member](SSampleOptions& options, const std::string& option, const std::string& value) {
                options.*member = numberOf(option, value);
            }};
}

SOption flagInto(bool SSampleOptions::*member)
{
    return {NoValue, [member](SSampleOptions& options, const std::string&, const std::string&) {
                options.*member = true;
            }};
}

SOption pathInto(std::filesystem::path SSampleOptions::*member)
{
    return {OneValue, [member](SSampleOptions& options, const std::string&,
                               const std::string& value) { options.*member = value; }};
}

void takeStepLimit(SSampleOptions& options, const std::string& option, const std::string& value)
{
    options.stepLimit = numberOf(option, value);
}

void takeProcessors(SSampleOptions& options, const std::string& option, const std::string& value)
{
    options.processors = static_cast<unsigned>(integerOf(option, value, 1, 2147483647));
}

void takeEngine(SSampleOptions& options, const std::string& option, const std::string& value)
{
    options.engine = integerOf(option, value, 0, 2);
}

void takeCompression(SSampleOptions& options, const std::string& option, const std::string& value)
{
    options.compress = integerOf(option, value, 0, 1) == 1;
}

void takeAxis(SSampleOptions& options, const std::string& option, const std::string& value)
{
    if (value != "X" && value != "Y" && value != "Z")
        refuse("The value \"" + value + "\" of " + option + " is not X, Y or Z.");
    options.withoutEffect.push_back(option);
}

const std::map<std::string, SOption>& knownOptions()
{
    static const std::map<std::string, SOption> options{
        {"-i", pathInto(&SSampleOptions::deck)},
        {"-e", pathInto(&SSampleOptions::exportSettings)},
        {"-c", {NoValue, takeNothing}},
        {"-r", numberInto(&SSampleOptions::totalTime)},
        {"-w", numberInto(&SSampleOptions::saveInterval)},
        {"-g", {OneValue, takeNumber}},
        {"-t", numberInto(&SSampleOptions::timeStep)},
        {"-p", {OneValue, takeProcessors}},
        {"-E", {OneValue, takeEngine}},
        {"-D", {AllUpToNextOption, takeNothing}},
        {"-R", flagInto(&SSampleOptions::rewind)},
        {"--particle-properties", {NoValue, takeNothing}},
        {"-n", {OneValue, takeStepLimit}},
        {"--dyn", {OneValue, takeNumber}},
        {"--dyn-interval", {OneValue, takeNumber}},
        {"--dyn-check", {OneValue, takeNumber}},
        {"--dyn-disp", {OneValue, takeNumber}},
        {"--gpu-split", {OneValue, takeAxis}},
        {"--simExport", flagInto(&SSampleOptions::exportEachInterval)},
        {"--cs", flagInto(&SSampleOptions::awaitClient)},
        {"--auto-grid", {NoValue, takeNothing}},
        {"--wait", {NoValue, takeNothing}},
        {"--compress-data", {OneValue, takeCompression}},
        {"--sp", {OneValue, takeNumber}},
        {"--acd", {OneValue, takeNumber}}};
    return options;
}

bool isOption(const std::string& word)
{
    return knownOptions().count(word) != 0;
}

std::size_t takeOption(SSampleOptions& options, const std::vector<std::string>& words,
                       std::size_t at)
{
    const std::string& name = words[at];
    const auto known = knownOptions().find(name);
    if (known == knownOptions().end())
        refuse("The option \"" + name + "\" is not known.");
    std::size_t next = at + 1;
    std::string value;
    if (known->second.values == OneValue) {
        if (next == words.size() || isOption(words[next]))
            refuse("The option " + name + " needs a value.");
        value = words[next++];
    }
    while (known->second.values == AllUpToNextOption && next < words.size() &&
           !isOption(words[next]))
        ++next;
    known->second.take(options, name, value);
    return next;
}

void checkTogether(const SSampleOptions& options)
{
    if (options.deck.empty())
        refuse("No deck was given: name a .zek file behind -i.");
    if (options.totalTime <= 0.0)
        refuse("The total time behind -r must be above 0.");
    if (options.saveInterval > 0.0 && options.totalTime / options.saveInterval > MostTimeSteps)
        refuse("The save interval behind -w asks for more than 10000 time steps.");
}

} // namespace

SSampleOptions parseSampleOptions(const std::vector<std::string>& arguments)
{
    SSampleOptions options;
    for (std::size_t at = 0; at < arguments.size();)
        at = takeOption(options, arguments, at);
    checkTogether(options);
    return options;
}
