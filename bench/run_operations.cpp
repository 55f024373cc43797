#include "bench/measured.h"
#include "bench/operations.h"
#include "deck/app_settings.h"
#include "jobs/submit_job_frame.h"
#include "widgets/integer_spin_box.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>

#include <time.h>

namespace {

/// The page of the program, worked by its buttons.
class CRunPage
{
public:
    CRunPage(const QString& job, const QString& simulator)
    {
        CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, simulator);
        m_page = std::make_unique<CSubmitJobFrame>();
        m_page->show();
        find<QLineEdit>("m_leJobLoadLocation").setText(job);
        find<QPushButton>("m_pbJobLoad").click();
    }

    /// Runs the cases. `prepared` is called when all case folders are there and the first case is
    /// about to start.
    void run(int atATime, const std::function<void()>& prepared)
    {
        find<CIntegerSpinBox>("m_sbConcurrentSimulations").setValue(atATime);
        QTimer::singleShot(0, m_page.get(), prepared);
        find<QPushButton>("m_pbStartSimulating").click();
    }

    void cancel() { find<QPushButton>("m_pbCancelSimulating").click(); }
    QObject* object() { return m_page.get(); }
    int completed() { return find<QProgressBar>("m_progBarCompletedSimulations").value(); }
    int cases() { return find<QProgressBar>("m_progBarCompletedSimulations").maximum(); }

private:
    template <class Widget>
    Widget& find(const char* name)
    {
        return *m_page->findChild<Widget*>(QLatin1String(name));
    }

    std::unique_ptr<CSubmitJobFrame> m_page;
};

/// Children of all threads, those that have ended and weren't asked after included.
int children()
{
    int count = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream list(thread.path() / "children");
        for (int child = 0; list >> child;) {
            ++count;
        }
    }
    return count;
}

} // namespace

/// Measures from the first start to the end of the last case.
void Operations::runCases(const QStringList& arguments)
{
    CRunPage page(arguments[0], arguments[1]);
    // The figures begin in the middle of the run and end behind it.
    std::unique_ptr<CMeasurement> measurement;
    page.run(arguments[2].toInt(), [&] { measurement = std::make_unique<CMeasurement>(); });
    measurement->say();
    if (page.completed() != page.cases()) {
        throw std::runtime_error("not all cases have ended");
    }
}

/// Measures from the click until the last child is gone.
void Operations::cancelCases(const QStringList& arguments)
{
    constexpr int atATime = 16;
    CRunPage page(arguments[0], arguments[1]);
    std::unique_ptr<CMeasurement> measurement;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, page.object(), [&] {
        if (children() >= atATime && !measurement) {
            measurement = std::make_unique<CMeasurement>();
            page.cancel();
        }
    });
    page.run(atATime, [&] { timer.start(10); });
    while (children() > 0) {
        const timespec pause{0, 200000};
        ::nanosleep(&pause, nullptr);
    }
    measurement->say();
}
