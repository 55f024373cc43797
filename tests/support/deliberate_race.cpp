// Races of two functions of our own, one kind for each way in which the program starts threads or
// hands data over. The thread sanitizer has to report every one of them in spite of what it is told
// to leave out; a suppression that hides one is too wide.

#include <QCoreApplication>
#include <QThread>
#include <QThreadPool>
#include <QVector>
#include <QtConcurrent>

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <thread>

namespace {

int shared = 0;

[[gnu::noinline]] void writeResultsHere()
{
    ++shared;
}

[[gnu::noinline]] void writeResultsThere()
{
    ++shared;
}

class CWritingThread : public QThread
{
private:
    void run() override { writeResultsThere(); }
};

void inAThread()
{
    CWritingThread thread;
    thread.start();
    writeResultsHere();
    thread.wait();
}

void inAStandardThread()
{
    std::thread thread(writeResultsThere);
    writeResultsHere();
    thread.join();
}

void inAPool()
{
    QThreadPool pool;
    const QFuture<void> future = QtConcurrent::run(&pool, writeResultsThere);
    writeResultsHere();
    pool.waitForDone();
}

class CWriter
{
public:
    void write() { ++m_number; }

private:
    int m_number = 0;
};

void inAPoolOnAMember()
{
    CWriter writer;
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    const QFuture<void> future = QtConcurrent::run(&writer, &CWriter::write);
    writer.write();
    QThreadPool::globalInstance()->waitForDone();
}

void inAPoolOnTheHeap()
{
    const auto number = std::make_unique<int>(0);
    QThreadPool pool;
    const QFuture<void> future = QtConcurrent::run(&pool, [&number] { ++*number; });
    ++*number;
    pool.waitForDone();
}

void inAContainer()
{
    QVector<int> numbers(3);
    int* const first = numbers.data();
    std::thread thread([first] { ++*first; });
    ++*first;
    thread.join();
}

void inAPostedFunctor()
{
    QObject receiver;
    bool called = false;
    CWritingThread thread;
    QObject::connect(
        &thread, &QThread::started, &thread,
        [&receiver, &called] {
            const auto functor = [&called] {
                called = true;
                writeResultsHere();
            };
            QMetaObject::invokeMethod(&receiver, functor, Qt::QueuedConnection);
        },
        Qt::DirectConnection);
    thread.start();
    while (!called) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    thread.wait();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const std::map<std::string, std::function<void()>> kinds = {
        {"thread", inAThread},
        {"standard_thread", inAStandardThread},
        {"pool", inAPool},
        {"pool_member", inAPoolOnAMember},
        {"pool_heap", inAPoolOnTheHeap},
        {"container", inAContainer},
        {"posted_functor", inAPostedFunctor},
    };
    kinds.at(argc > 1 ? argv[1] : "")();
    std::printf("%d\n", shared);
}
