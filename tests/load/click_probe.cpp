#include "tests/load/click_probe.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds pauseBetweenClicks(10);

} // namespace

CClickProbe::CClickProbe(QListWidget& list)
    : m_list(list)
{
    connect(&list, &QListWidget::itemClicked, this, [this] {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bAnswered = true;
        m_answer.notify_all();
    });
}

CClickProbe::~CClickProbe()
{
    stop();
}

void CClickProbe::start()
{
    m_point = m_list.visualItemRect(m_list.item(0)).center();
    m_bStopping = false;
    m_thread = std::thread([this] { clickOnAndOn(); });
}

void CClickProbe::stop()
{
    if (!m_thread.joinable()) {
        return;
    }
    const auto isWaiting = [this] {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bStopping = true;
        return m_bWaiting;
    };
    while (isWaiting()) {
        QCoreApplication::processEvents();
    }
    m_thread.join();
}

double CClickProbe::longestMilliseconds() const
{
    return m_milliseconds.empty() ? 0.0
                                  : *std::max_element(m_milliseconds.begin(), m_milliseconds.end());
}

void CClickProbe::clickOnAndOn()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_bStopping) {
        m_bAnswered = false;
        m_bWaiting = true;
        const Clock::time_point begin = Clock::now();
        post();
        m_answer.wait(lock, [this] { return m_bAnswered; });
        const std::chrono::duration<double, std::milli> taken = Clock::now() - begin;
        m_milliseconds.push_back(taken.count());
        m_bWaiting = false;
        lock.unlock();
        std::this_thread::sleep_for(pauseBetweenClicks);
        lock.lock();
    }
}

void CClickProbe::post() const
{
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held =
            type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QCoreApplication::postEvent(
            m_list.viewport(),
            new QMouseEvent(type, m_point, Qt::LeftButton, held, Qt::NoModifier));
    }
}
