#pragma once

#include "app/connections.h"
#include "app/frame.h"
#include "ui_deck_loader_frame.h"

#include <memory>

class CDeckSerializer;

/// Page 0: names the deck and the additional files. A valid selection is stored and its deck is
/// loaded at each change of either edit; Next has no part in it.
class CDeckLoaderFrame : public IFrame, private Ui::DeckLoaderFrameUI
{
    Q_OBJECT

public:
    explicit CDeckLoaderFrame(QWidget* parent = nullptr);
    ~CDeckLoaderFrame() override;

    /// The edits are not restored from the settings.
    void onPageEntered() override;

private slots:
    void browseForFile();
    void browseForAdditionalFiles();
    /// Lets std::filesystem::filesystem_error "exists" pass, and what loading a deck lets pass.
    void validateFileSelections();

private:
    void setupConnections();
    void showLogo();
    bool selectionsAreValid() const;
    void saveSelections() const;
    void reloadDeck();

    static CConnectionTable<CDeckLoaderFrame> s_connections;

    std::unique_ptr<CDeckSerializer> m_serializer;
};
