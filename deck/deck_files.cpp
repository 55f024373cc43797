#include "deck/deck_files.h"

#include "app/constants/file_names.h"
#include "platform/paths.h"

namespace DeckFiles {

std::string dataFile(std::string deckPath)
{
    const std::size_t extension = deckPath.find(FileNames::DeckExtension);
    if (extension != std::string::npos) {
        deckPath.replace(extension, FileNames::DeckExtension.size(), FileNames::DataFileSuffix);
    }
    return platform::withNativeSeparators(std::move(deckPath));
}

QString companion(const QString& deckPath, const std::string& extension)
{
    QString path = deckPath;
    return path.replace(QString::fromStdString(FileNames::DeckExtension),
                        QString::fromStdString(extension), Qt::CaseSensitive);
}

std::string deckName(const std::string& deckPath)
{
    std::string name = deckPath;
    for (std::size_t at = name.find(FileNames::DeckExtension); at != std::string::npos;
         at = name.find(FileNames::DeckExtension, at)) {
        name.erase(at, FileNames::DeckExtension.size());
    }
    return name.substr(name.find_last_of("\\/") + 1);
}

} // namespace DeckFiles
