#pragma once

#include "deck/deck_store.h"

#include <cstddef>
#include <string>
#include <vector>

/// Makes the folders of the cases: copies of the working files, and in the copy of the deck's data
/// the values of the case.
class CCaseFolderWriter
{
public:
    /// Takes the paths and choices from settings and store as they are now.
    explicit CCaseFolderWriter(std::string caseRoot);

    /// Makes `Job<number>` with the values of `record`. Throws std::filesystem::filesystem_error
    /// "create_directory" or "copy_file", and H5::Exception where the copy can't be opened.
    void write(std::size_t number, CCreatorData& record) const;

private:
    void copyDeck(const std::string& stem) const;
    void copyAdditionalFiles(const std::string& folder) const;
    void copyPostProcessing(const std::string& folder, const std::string& stem) const;
    void copyCoupling(const std::string& folder) const;
    void writeData(const std::string& stem, CCreatorData& record) const;

    const std::string m_caseRoot;
    const std::string m_deck;
    const std::string m_deckPath;
    const std::vector<std::string> m_additionalFiles;
    const CDeckStore::Coupling m_coupling;
    const CDeckStore::PostProcessing m_postProcessing;
};
