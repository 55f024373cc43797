// A program of the tests for what becomes of a run whose wizard dies: generates a job in the real
// window and runs it, saying how far it has come, until its event loop is left or it is ended.
//   run_probe <deck.zek> <save location> <simulator> <cases> [reduce]

#include "deck/deck_store.h"
#include "tests/road/window_road.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTimer>

#include <iostream>

namespace {

void say(const char* word)
{
    std::cout << word << std::endl;
}

void play(CWindowRoad& road, const QStringList& arguments)
{
    road.chooseDeck(arguments.value(1));
    road.vary(arguments.value(4).toInt());
    road.generate(arguments.value(2));
    CDeckStore::instance()->setSimulationOutputs(arguments.value(5) == QLatin1String("reduce"));
    say("generated");
    road.start(2);
    say("ended");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const CTestEnvironment environment;
    const QStringList arguments = QCoreApplication::arguments();
    CWindowRoad road(arguments.value(3));
    // Below the event loop, where no exception finds a handler.
    QTimer::singleShot(0, [&] {
        play(road, arguments);
        QCoreApplication::quit();
    });
    return QApplication::exec();
}
