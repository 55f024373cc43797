#include "app/constants/icons.h"

#include <QSize>

// Q_INIT_RESOURCE declares a function of the enclosing namespace, so this one is global.
static void registerResources()
{
    Q_INIT_RESOURCE(tarnel);
}

namespace {

QIcon iconOf(const QString& smallPath, const QString& largePath)
{
    QIcon icon;
    icon.addFile(smallPath, QSize(16, 16), QIcon::Normal, QIcon::Off);
    icon.addFile(largePath, QSize(32, 32), QIcon::Normal, QIcon::Off);
    return icon;
}

QIcon iconOf(const QString& stem)
{
    return iconOf(stem + QStringLiteral("_16"), stem + QStringLiteral("_32"));
}

QIcon windowIcon(const QString& path)
{
    QIcon icon;
    for (const int side : {16, 32, 48, 256}) {
        icon.addFile(path, QSize(side, side), QIcon::Normal, QIcon::Off);
    }
    return icon;
}

} // namespace

namespace Icons {

QIcon OpenFile;
QIcon Creator;
QIcon Analyst;
QIcon Simulator;
QIcon Checkmark;
QIcon Results;
QIcon PreSim;
QIcon PostSimSuccess;
QIcon PostSimFailure;
QIcon MainWindow;
QString PeriSimPath;

void initialise()
{
    registerResources();
    OpenFile = iconOf(QStringLiteral(":/Tarnel/Open_File"));
    Creator = iconOf(QStringLiteral(":/Tarnel/Creator"));
    Analyst = iconOf(QStringLiteral(":/Tarnel/Analyst"));
    // The small path names no resource: the icon lives on its 32-pixel image alone.
    Simulator =
        iconOf(QStringLiteral(":/Tarnel/Simulator_6"), QStringLiteral(":/Tarnel/Simulator_32"));
    Checkmark = iconOf(QStringLiteral(":/Tarnel/Checkmark"));
    Results = iconOf(QStringLiteral(":/Tarnel/Results"));
    PreSim = iconOf(QStringLiteral(":/Tarnel/PreSim"));
    PostSimSuccess = iconOf(QStringLiteral(":/Tarnel/PostSimSuccess"));
    PostSimFailure = iconOf(QStringLiteral(":/Tarnel/PostSimFailure"));
    MainWindow = windowIcon(QStringLiteral(":/Tarnel/MainWindowIcon"));
    PeriSimPath = QStringLiteral(":/Tarnel/PeriSim_32");
}

} // namespace Icons
