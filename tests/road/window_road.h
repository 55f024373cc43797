#pragma once

#include "app/main_window.h"
#include "samples/player/modal_watcher.h"
#include "samples/player/user_hand.h"

#include <QString>

#include <memory>

/// The real window and a user's hand on it, for a plain deck "glass" whose restitution of
/// glass<>steel takes further values, 0.1, 0.2 and so on. Texts are set at once, whatever letters
/// they hold; everything else is clicked.
class CWindowRoad
{
public:
    /// `simulator` is what an earlier run of the program has stored.
    explicit CWindowRoad(const QString& simulator);

    /// Page 0. False where Next isn't enabled behind it.
    bool chooseDeck(const QString& path);
    /// Pages 0 to 4: varies the field, then takes the other pages as they are. The first case has
    /// the deck's value, 0.5.
    void vary(int cases);
    void generate(const QString& saveLocation);
    void load(const QString& job);
    /// Returns when the run has ended.
    void start(int concurrency = 1);
    void collate(const QString& folder);
    /// Replaces the text of a line edit.
    void set(const QString& edit, const QString& text) const;

    int rows() const;
    bool hasSucceeded(int row) const;
    bool hasFailed(int row) const;
    QString textOf(const QString& name) const { return m_hand.textOf(name); }
    const CModalWatcher& dialogs() const { return m_dialogs; }
    CUserHand& hand() { return m_hand; }

    /// The submit job page, for slots that raise what no click may let pass.
    QObject* submitPage() const;

private:
    qint64 iconOf(int row) const;

    std::unique_ptr<CMainWindow> m_window;
    CUserHand m_hand;
    CModalWatcher m_dialogs;
};
