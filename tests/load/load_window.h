#pragma once

#include "app/main_window.h"
#include "samples/deck_description.h"
#include "samples/player/modal_watcher.h"
#include "samples/player/user_hand.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <vector>

class CSimulationListItem;
class QListWidget;

/// Whether the sizes are those that docs/reliability.md speaks of; else they are a small part.
bool takesFullSizes();
/// One of two sizes.
int sized(int usual, int full);

/// Says what was measured, on a line of its own that starts with "figure".
void sayFigure(const QString& what, const QString& value);
void sayMilliseconds(const QString& what, qint64 milliseconds);

/// Two varied numbers of a deck's cases: the first field takes `outer` values, the last one of the
/// interactions `inner` values, and changes fastest.
struct VariedCases
{
    int inner = 1;
    int outer = 1;

    int count() const { return outer * inner; }
    double first(int caseNumber) const { return 0.1 + 0.001 * (caseNumber / inner); }
    double last(int caseNumber) const { return 0.01 + 0.0001 * (caseNumber % inner); }
    /// The line of the matrix for a plain deck, without the line's end.
    QByteArray line(int caseNumber, const QByteArray& options) const;
};

/// The program's window with a deck of its own and the trivial simulator, worked by its tabs.
class CLoadWindow
{
public:
    enum class Analysis { None, Export };

    explicit CLoadWindow(const DeckDescription& deck, Analysis analysis = Analysis::None);

    /// Loads the deck, enters the page of the parameters, chooses analysis and options.
    void prepare();
    /// Gives the fields in the store the values of these cases.
    static void vary(const VariedCases& cases);
    /// Generates the job, which loads it.
    void generate();
    /// Loads the job that stands in a folder.
    void load(const QString& job);
    /// Presses Start and returns when the run has ended; the case root of an earlier run is
    /// removed.
    void run(int concurrency);

    CUserHand& hand() { return m_hand; }
    const CModalWatcher& dialogs() const { return m_dialogs; }
    QString path(const QString& name) const { return m_root.filePath(name); }
    QString job() const { return path(QStringLiteral("jobs/JobSpec")); }
    QString caseRoot() const { return job() + QStringLiteral("/JobFileLocation"); }
    QListWidget& rows() const;
    CSimulationListItem* row(int number) const;

    /// Number of the first row that doesn't have the name of its case, the icon of a case that
    /// went well and the output of its simulator, which ran `runs` times; -1 where all are right.
    int firstWrongRow(int runs) const;

private:
    bool isRight(int number, int runs) const;
    void openTab(const char* action);

    /// A program that was just started, whose user has chosen the simulator before. The file dialog
    /// would do as well, but it has a thread of its own, which the thread sanitizer can't follow.
    struct Settings
    {
        Settings();
    };

    Settings m_settings;
    QTemporaryDir m_root;
    Analysis m_analysis;
    CMainWindow m_window;
    CUserHand m_hand;
    CModalWatcher m_dialogs;
};
