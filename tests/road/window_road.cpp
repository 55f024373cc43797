#include "tests/road/window_road.h"

#include "app/constants/icons.h"
#include "app/startup.h"
#include "deck/app_settings.h"
#include "jobs/submit_job_frame.h"
#include "tests/support/test_environment.h"
#include "widgets/integer_spin_box.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTest>

namespace {

std::unique_ptr<CMainWindow> freshWindow(const QString& simulator)
{
    CTestEnvironment::reset();
    startup::fillConstants();
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, simulator);
    auto window = std::make_unique<CMainWindow>();
    window->show();
    return window;
}

} // namespace

CWindowRoad::CWindowRoad(const QString& simulator)
    : m_window(freshWindow(simulator))
    , m_hand(*m_window)
{
}

void CWindowRoad::set(const QString& edit, const QString& text) const
{
    m_hand.find<QLineEdit>(edit)->setText(text);
}

bool CWindowRoad::chooseDeck(const QString& path)
{
    set(QStringLiteral("m_leDeckFilePath"), path);
    return m_hand.isEnabled(QStringLiteral("m_pbNextButton"));
}

void CWindowRoad::vary(int cases)
{
    const QString next = QStringLiteral("m_pbNextButton");
    m_hand.click(next);
    m_hand.chooseProperty({QStringLiteral("Interactions")});
    m_hand.chooseRow(QStringLiteral("m_materialListWidget"), QStringLiteral("glass<>steel"));
    m_hand.chooseRow(QStringLiteral("m_parameterListWidget"), QStringLiteral("Restitution"));
    for (int number = 1; number < cases; ++number) {
        m_hand.click(QStringLiteral("m_pbAdd"));
        m_hand.typeValue(number, QStringLiteral("0.%1").arg(number));
    }
    for (int page = 1; page < 4; ++page) {
        m_hand.click(next);
    }
}

void CWindowRoad::generate(const QString& saveLocation)
{
    set(QStringLiteral("m_leJobSaveLocation"), saveLocation);
    m_hand.click(QStringLiteral("m_pbGenerateJob"));
}

void CWindowRoad::load(const QString& job)
{
    m_hand.openTab(QStringLiteral("m_tabSubmitJob"));
    set(QStringLiteral("m_leJobLoadLocation"), job);
    m_hand.click(QStringLiteral("m_pbJobLoad"));
}

void CWindowRoad::start(int concurrency)
{
    m_hand.find<CIntegerSpinBox>(QStringLiteral("m_sbConcurrentSimulations"))
        ->setValue(concurrency);
    m_hand.click(QStringLiteral("m_pbStartSimulating"));
}

void CWindowRoad::collate(const QString& folder)
{
    m_hand.click(QStringLiteral("m_pbNextButton"));
    set(QStringLiteral("m_leDistributedFilePath"), folder);
    m_hand.click(QStringLiteral("m_pbGenerateMasterResults"));
}

int CWindowRoad::rows() const
{
    return m_hand.find<QListWidget>(QStringLiteral("m_listOngoingSimulations"))->count();
}

QObject* CWindowRoad::submitPage() const
{
    return m_window->findChild<CSubmitJobFrame*>();
}

qint64 CWindowRoad::iconOf(int row) const
{
    const auto* list = m_hand.find<QListWidget>(QStringLiteral("m_listOngoingSimulations"));
    return list->item(row)->icon().cacheKey();
}

bool CWindowRoad::hasSucceeded(int row) const
{
    return iconOf(row) == Icons::PostSimSuccess.cacheKey();
}

bool CWindowRoad::hasFailed(int row) const
{
    return iconOf(row) == Icons::PostSimFailure.cacheKey();
}
