#pragma once

#include "app/main_window.h"
#include "samples/player/modal_watcher.h"
#include "samples/player/user_hand.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A user's way from a deck to the files of a distributed run: two fields varied, options set.
/// The deck "bed" and its neighbours are made anew in a folder of their own.
class CWizardJourney
{
public:
    enum class Analysis { None, Export, Python };

    explicit CWizardJourney(Analysis analysis);

    /// Goes all the way, through the window alone. Throws std::runtime_error where a widget is
    /// missing or can't be reached.
    void go();

    /// Below the folder of the journey.
    QString path(const QString& name) const;
    QString job() const { return path(QStringLiteral("jobs/JobSpec")); }
    QString caseRoot() const { return job() + QStringLiteral("/JobFileLocation"); }

    QString casesToBeGenerated() const { return m_cases; }
    QStringList rows() const;
    const CModalWatcher& dialogs() const { return m_dialogs; }

    /// Name, time and content of all that belongs to the deck.
    QStringList sources() const;

private:
    void makeSources() const;
    void loadDeck();
    void vary();
    void chooseAnalysis();
    void setOptions();
    void setCoupling();
    void generate();

    QTemporaryDir m_root;
    Analysis m_analysis;
    CMainWindow m_window;
    CUserHand m_hand;
    CModalWatcher m_dialogs;
    QString m_cases;
};
