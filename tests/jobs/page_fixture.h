#pragma once

#include "jobs/submit_job_frame.h"
#include "samples/player/modal_watcher.h"
#include "tests/support/job_maker.h"
#include "tests/support/named_child.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <list>
#include <memory>

class CSimulationListItem;

/// A submit job page with the fake simulator chosen, and the hand that works it as a user would.
class CPageFixture
{
public:
    CPageFixture();
    /// Destroys the page, as at the end of the program, and unsets what the simulator was told.
    ~CPageFixture();

    /// Path of the fake simulator.
    static QString simulator();

    CSubmitJobFrame& page() { return *m_page; }
    void destroyPage() { m_page.reset(); }
    CModalWatcher& modals() { return m_modals; }

    template <class Widget>
    Widget* widget(const char* name) const
    {
        return &named<Widget>(*m_page, QString::fromLatin1(name));
    }

    void click(const char* button) const;

    /// A new empty folder.
    QString newFolder();
    /// Makes a job and loads it; returns its folder.
    QString loadJob(const JobDescription& description);
    QString loadJob(int cases);
    void load(const QString& job) const;

    /// Tells the simulator what to do in all cases, or in one.
    void behave(const QByteArray& behaviours);
    void behave(int caseNumber, const QByteArray& behaviours);

    /// During the next run: as soon as the condition holds, the action is done, once. Actions wait
    /// for those before them.
    void when(std::function<bool()> condition, std::function<void()> action);

    /// Presses Start and returns when the run has ended. False, after pressing Cancel, for a run
    /// that took longer than ten seconds or in which an action wasn't done.
    bool run(int concurrency = 1);

    CSimulationListItem* row(int caseNumber) const;
    bool isWaiting(int caseNumber) const;
    bool isRunning(int caseNumber) const;
    bool hasSucceeded(int caseNumber) const;
    bool hasFailed(int caseNumber) const;
    int runningRows() const;
    int progress() const;
    QByteArray output(int caseNumber) const;

    /// Clicks a row and returns what the inspector shows.
    QString inspected(int caseNumber) const;

private:
    struct Step
    {
        std::function<bool()> condition;
        std::function<void()> action;
    };

    qint64 iconKey(int caseNumber) const;
    void onTick();

    QTemporaryDir m_root;
    int m_folders = 0;
    CModalWatcher m_modals;
    std::unique_ptr<CSubmitJobFrame> m_page;
    std::list<Step> m_steps;
    QTimer m_timer;
    QElapsedTimer m_clock;
    bool m_bTimedOut = false;
    std::list<QByteArray> m_variables;
};

/// The bytes of a file of a case in the case root of that name; empty where there is none.
QByteArray caseFile(const QString& job, const char* caseRoot, int caseNumber, const char* name);
