#include "setup/dfg_input_output.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "deck/app_settings.h"
#include "deck/deck_files.h"
#include "setup/dfg_line.h"

#include <QFileInfo>
#include <QString>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

std::map<std::string, int> s_dfgDataTypes{
    {"BOOLEAN", 0}, {"INT", 1}, {"UNSIGNED INT", 2}, {"DOUBLE", 3}, {"QT STRING", 17}};

namespace {

/// Line ends of both kinds are dropped, also where the file ends; a line that begins with a NUL
/// counts as empty.
void readLine(std::istream& stream, std::string& line)
{
    line.clear();
    std::getline(stream, line);
    if (stream.bad() || (!line.empty() && line.front() == '\0')) {
        line.clear();
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
}

bool hasComponentOf(const std::string& keyPath, const std::set<std::string>& components)
{
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = keyPath.find(':', begin);
        if (components.count(keyPath.substr(begin, end - begin)) > 0) {
            return true;
        }
    }
    return false;
}

/// Empty for a data type number that has no conversion.
std::any converted(int dataType, const std::string& value)
{
    switch (dataType) {
    case 0:
        return value == "TRUE";
    case 1:
        return checked::stoi(value);
    case 2:
        return checked::stoul(value);
    case 3:
        return checked::stod(value);
    case 17:
        return QString::fromStdString(value);
    default:
        std::cout << "Missing data type expected in dfg file" << std::endl;
        return {};
    }
}

void addLine(DfgValues& values, const std::string& line,
             const std::set<std::string>& ignoredComponents)
{
    if (DfgLine::isBlank(line)) {
        return;
    }
    const auto fields = DfgLine::fields(line);
    if (!fields) {
        return;
    }
    const std::string keyPath = DfgLine::withEscapesReplaced(fields->keyPath);
    if (hasComponentOf(keyPath, ignoredComponents)) {
        return;
    }
    const int dataType = checked::at(s_dfgDataTypes, std::string(fields->dataType));
    std::any value = converted(dataType, std::string(fields->value));
    if (value.has_value()) {
        values.emplace(keyPath, std::move(value));
    }
}

/// Leaves the first line of the body in `line`: the file version is optional, so the third line
/// may already be one.
void readHeader(std::istream& stream, std::string& line)
{
    readLine(stream, line);
    if (!DfgLine::isFormat(line)) {
        std::cout << "This file is not of the correct format" << std::endl;
    }
    readLine(stream, line);
    if (!DfgLine::hasFormatVersion(line)) {
        std::cout << "This file is not of the correct version format" << std::endl;
    }
    readLine(stream, line);
    if (DfgLine::hasFileVersion(line)) {
        line.clear();
    }
}

} // namespace

void CDFGInputOutput::read(DfgValues& values, const std::set<std::string>& ignoredComponents) const
{
    const QString path = DeckFiles::companion(CAppSettings::instance()->text(CAppSettings::ZEKPath),
                                              FileNames::DfgExtension);
    if (!QFileInfo(path).isFile()) {
        return;
    }
    std::ifstream stream(std::filesystem::u8path(path.toStdString()), std::ios::binary);
    std::string line;
    readHeader(stream, line);
    addLine(values, line, ignoredComponents);
    // Nothing but the end of the file ends this: a stream that fails before it never gets there.
    while (!stream.eof()) {
        readLine(stream, line);
        addLine(values, line, ignoredComponents);
    }
}
