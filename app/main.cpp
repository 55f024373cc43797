#include "app/main_window.h"
#include "app/startup.h"

#include <QApplication>

#include <memory>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    startup::keepNumbersNeutral();
    startup::fillConstants();
    const auto window = std::make_unique<CMainWindow>();
    window->show();
    return QApplication::exec();
}
