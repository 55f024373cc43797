#include "tests/jobs/page_fixture.h"

#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "jobs/case_output.h"
#include "jobs/simulation_list_item.h"
#include "tests/support/test_environment.h"
#include "widgets/integer_spin_box.h"

#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

#include <utility>

namespace {

constexpr qint64 longestRun = 10000;

} // namespace

CPageFixture::CPageFixture()
{
    CTestEnvironment::reset();
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, simulator());
    m_page = std::make_unique<CSubmitJobFrame>();
    m_page->show();
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { onTick(); });
}

QString CPageFixture::simulator()
{
    return QStringLiteral(TARNEL_FAKE_SIMULATOR);
}

CPageFixture::~CPageFixture()
{
    m_page.reset();
    for (const QByteArray& variable : m_variables) {
        qunsetenv(variable.constData());
    }
}

void CPageFixture::click(const char* button) const
{
    QTest::mouseClick(widget<QAbstractButton>(button), Qt::LeftButton);
}

QString CPageFixture::newFolder()
{
    const QString path = m_root.filePath(QString::number(m_folders++));
    QDir().mkpath(path);
    return path;
}

QString CPageFixture::loadJob(const JobDescription& description)
{
    const QString job = newFolder();
    makeJob(job, description);
    load(job);
    return job;
}

QString CPageFixture::loadJob(int cases)
{
    JobDescription description;
    description.cases = cases;
    return loadJob(description);
}

void CPageFixture::load(const QString& job) const
{
    widget<QLineEdit>("m_leJobLoadLocation")->setText(job);
    click("m_pbJobLoad");
}

void CPageFixture::behave(const QByteArray& behaviours)
{
    m_variables.push_back("TARNEL_FAKE");
    qputenv("TARNEL_FAKE", behaviours);
}

void CPageFixture::behave(int caseNumber, const QByteArray& behaviours)
{
    m_variables.push_back("TARNEL_FAKE_" + QByteArray::number(caseNumber));
    qputenv(m_variables.back().constData(), behaviours);
}

void CPageFixture::when(std::function<bool()> condition, std::function<void()> action)
{
    m_steps.push_back({std::move(condition), std::move(action)});
}

bool CPageFixture::run(int concurrency)
{
    widget<CIntegerSpinBox>("m_sbConcurrentSimulations")->setValue(concurrency);
    m_bTimedOut = false;
    m_clock.start();
    m_timer.start(2);
    click("m_pbStartSimulating");
    m_timer.stop();
    const bool complete = m_steps.empty();
    m_steps.clear();
    return complete && !m_bTimedOut;
}

void CPageFixture::onTick()
{
    if (m_clock.elapsed() > longestRun && !m_bTimedOut) {
        m_bTimedOut = true;
        click("m_pbCancelSimulating");
    } else if (!m_steps.empty() && m_steps.front().condition()) {
        const std::function<void()> action = m_steps.front().action;
        m_steps.pop_front();
        action();
    }
}

CSimulationListItem* CPageFixture::row(int caseNumber) const
{
    auto* const list = widget<QListWidget>("m_listOngoingSimulations");
    return static_cast<CSimulationListItem*>(list->item(caseNumber));
}

qint64 CPageFixture::iconKey(int caseNumber) const
{
    return row(caseNumber)->icon().cacheKey();
}

bool CPageFixture::isWaiting(int caseNumber) const
{
    return iconKey(caseNumber) == Icons::PreSim.cacheKey();
}

bool CPageFixture::isRunning(int caseNumber) const
{
    return !isWaiting(caseNumber) && !hasSucceeded(caseNumber) && !hasFailed(caseNumber);
}

bool CPageFixture::hasSucceeded(int caseNumber) const
{
    return iconKey(caseNumber) == Icons::PostSimSuccess.cacheKey();
}

bool CPageFixture::hasFailed(int caseNumber) const
{
    return iconKey(caseNumber) == Icons::PostSimFailure.cacheKey();
}

int CPageFixture::runningRows() const
{
    int running = 0;
    for (int number = 0; number < widget<QListWidget>("m_listOngoingSimulations")->count();
         ++number) {
        running += isRunning(number) ? 1 : 0;
    }
    return running;
}

int CPageFixture::progress() const
{
    return widget<QProgressBar>("m_progBarCompletedSimulations")->value();
}

QByteArray CPageFixture::output(int caseNumber) const
{
    return QByteArray::fromStdString(row(caseNumber)->output()->bytes());
}

QString CPageFixture::inspected(int caseNumber) const
{
    auto* const list = widget<QListWidget>("m_listOngoingSimulations");
    list->scrollToItem(row(caseNumber));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::KeyboardModifiers(),
                      list->visualItemRect(row(caseNumber)).center());
    return widget<QTextEdit>("m_inspectorDetails")->toPlainText();
}

QByteArray caseFile(const QString& job, const char* caseRoot, int caseNumber, const char* name)
{
    return readFile(
        QStringLiteral("%1/%2/Job%3/%4")
            .arg(job, QLatin1String(caseRoot), QString::number(caseNumber), QLatin1String(name)));
}
