#include "tests/load/load_window.h"

#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/case_output.h"
#include "jobs/simulation_list_item.h"
#include "parameters/parameter_entry.h"
#include "samples/deck_maker.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include <cstdio>

namespace {

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s can't be written", qPrintable(path));
    }
}

/// The deck's own value stays in front of the others.
void giveValues(CParameterFields& field, int count, double (*valueAt)(int))
{
    field.m_values.resize(1);
    for (int index = 0; index < count; ++index) {
        field.m_values.emplace_back(valueAt(index));
    }
}

} // namespace

bool takesFullSizes()
{
    return qgetenv("TARNEL_LOAD") == "full";
}

int sized(int usual, int full)
{
    return takesFullSizes() ? full : usual;
}

void sayFigure(const QString& what, const QString& value)
{
    std::printf("figure: %s: %s\n", qPrintable(what), qPrintable(value));
    std::fflush(stdout);
}

void sayMilliseconds(const QString& what, qint64 milliseconds)
{
    sayFigure(what, QStringLiteral("%1 ms").arg(milliseconds));
}

QByteArray VariedCases::line(int caseNumber, const QByteArray& options) const
{
    QByteArray text = QByteArray::number(caseNumber) + ',' +
                      QByteArray::number(first(caseNumber), 'g', 6) + ",0.25,0.02,0.5,0.4," +
                      QByteArray::number(last(caseNumber), 'g', 6) + ',';
    constexpr int forces = 6;
    for (int force = 0; force < forces; ++force) {
        text += "0,0,0,false,0,0,0,";
    }
    return text + options;
}

CLoadWindow::Settings::Settings()
{
    CTestEnvironment::reset();
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation,
                                       QStringLiteral(TARNEL_TRIVIAL_SIMULATOR));
}

CLoadWindow::CLoadWindow(const DeckDescription& deck, Analysis analysis)
    : m_analysis(analysis)
    , m_hand(m_window)
{
    for (const char* folder : {"deck", "jobs"}) {
        QDir().mkpath(path(QLatin1String(folder)));
    }
    writeDeck(deck, path(QStringLiteral("deck")).toStdString(), "deck");
    write(path(QStringLiteral("deck/deck.dfg")), "!format=KEYPATHVALUE\n!format-version=1.0.0.0\n");
    write(path(QStringLiteral("deck/deck.qsv")), "queries\n");
    m_window.resize(1000, 700);
    m_window.show();
}

void CLoadWindow::openTab(const char* action)
{
    m_hand.openTab(QLatin1String(action));
}

void CLoadWindow::prepare()
{
    m_hand.type(QStringLiteral("m_leDeckFilePath"), path(QStringLiteral("deck/deck.zek")));
    openTab("m_tabParameterEditor");
    openTab("m_tabPostProccessing");
    if (m_analysis == Analysis::Export) {
        m_hand.click(QStringLiteral("m_rbPostProcessingORVA"));
    }
    openTab("m_tabProcessingOptions");
    openTab("m_tabSubmitJob");
    m_hand.type(QStringLiteral("m_leJobSaveLocation"), path(QStringLiteral("jobs")));
}

void CLoadWindow::vary(const VariedCases& cases)
{
    const CParameterEntry& interactions = *CDeckStore::instance()->parameters().at(0);
    CParameterFields& first = *interactions.m_keys.at(0)->m_fields.at(0);
    CParameterFields& last = *interactions.m_keys.at(1)->m_fields.at(2);
    giveValues(first, cases.outer, [](int index) { return 0.1 + 0.001 * index; });
    giveValues(last, cases.inner, [](int index) { return 0.01 + 0.0001 * index; });
}

void CLoadWindow::generate()
{
    m_hand.click(QStringLiteral("m_pbGenerateJob"));
}

void CLoadWindow::load(const QString& job)
{
    m_hand.find<QLineEdit>(QStringLiteral("m_leJobLoadLocation"))->setText(job);
    m_hand.click(QStringLiteral("m_pbJobLoad"));
}

void CLoadWindow::run(int concurrency)
{
    // Windows may hold the folder of a simulator that has ended a moment longer.
    if (!QTest::qWaitFor([this] { return QDir(caseRoot()).removeRecursively(); })) {
        qFatal("%s can't be removed", qPrintable(caseRoot()));
    }
    m_hand.type(QStringLiteral("m_sbConcurrentSimulations"), QString::number(concurrency));
    m_hand.click(QStringLiteral("m_pbStartSimulating"));
    // As the program's event loop does behind the slot: what Qt put off to be deleted goes.
    m_hand.pause(1);
}

QListWidget& CLoadWindow::rows() const
{
    return *m_hand.find<QListWidget>(QStringLiteral("m_listOngoingSimulations"));
}

CSimulationListItem* CLoadWindow::row(int number) const
{
    return static_cast<CSimulationListItem*>(rows().item(number));
}

bool CLoadWindow::isRight(int number, int runs) const
{
    const CSimulationListItem* const item = row(number);
    const QByteArray output = "Job" + QByteArray::number(number) + '\n';
    return item->id() == number && item->text() == QStringLiteral("deck%1").arg(number) &&
           item->icon().cacheKey() == Icons::PostSimSuccess.cacheKey() &&
           Native::fromTextMode(QByteArray::fromStdString(item->output()->bytes())) ==
               output.repeated(runs);
}

int CLoadWindow::firstWrongRow(int runs) const
{
    for (int number = 0; number < rows().count(); ++number) {
        if (!isRight(number, runs)) {
            const CSimulationListItem& item = *row(number);
            qWarning("row %d: case %d, \"%s\", went well: %d, output \"%s\"", number, item.id(),
                     qPrintable(item.text()),
                     int(item.icon().cacheKey() == Icons::PostSimSuccess.cacheKey()),
                     item.output()->bytes().c_str());
            return number;
        }
    }
    return -1;
}
