#include "tests/support/faulty_places.h"

#include <QProcess>
#include <QStringList>

#include <utility>

namespace {

bool s_mayMount = false;

/// Wine's files are those of the system below, and so are its mounts. The stand-in for Python hands
/// paths over as that system names them.
bool runsBelow(const QStringList& command)
{
    QProcess python;
    python.start(QStringLiteral("python.exe"),
                 QStringList{QStringLiteral("-c"),
                             QStringLiteral("import subprocess, sys; "
                                            "sys.exit(subprocess.run(sys.argv[1:]).returncode)")} +
                     command);
    return python.waitForFinished() && python.exitStatus() == QProcess::NormalExit &&
           python.exitCode() == 0;
}

void require(const QStringList& command)
{
    if (!runsBelow(command)) {
        qFatal("%s failed", qPrintable(command.join(QLatin1Char(' '))));
    }
}

void unmount(const std::string& folder)
{
    runsBelow({QStringLiteral("umount"), QStringLiteral("--lazy"), QString::fromStdString(folder)});
}

} // namespace

// Wine doesn't keep an administrator from what is write-protected, and it has no limits: without
// mounts nothing stands in.
void FaultyPlaces::prepare()
{
    s_mayMount = qgetenv("TARNEL_OWN_MOUNTS") == "1";
}

const char* FaultyPlaces::kind()
{
    return s_mayMount ? "file systems of their own, below Wine" : "none";
}

bool FaultyPlaces::mayMount()
{
    return s_mayMount;
}

bool FaultyPlaces::canBeMade()
{
    return s_mayMount;
}

CSmallDisk::CSmallDisk(std::string folder, std::size_t bytes)
    : m_folder(std::move(folder))
{
    require({QStringLiteral("mount"), QStringLiteral("-t"), QStringLiteral("tmpfs"),
             QStringLiteral("-o"), QStringLiteral("size=%1").arg(bytes), QStringLiteral("tarnel"),
             QString::fromStdString(m_folder)});
}

CSmallDisk::~CSmallDisk()
{
    unmount(m_folder);
}

CReadOnlyPlace::CReadOnlyPlace(std::string folder)
    : m_folder(std::move(folder))
{
    const QString path = QString::fromStdString(m_folder);
    require({QStringLiteral("mount"), QStringLiteral("--bind"), path, path});
    require(
        {QStringLiteral("mount"), QStringLiteral("-o"), QStringLiteral("remount,bind,ro"), path});
}

CReadOnlyPlace::~CReadOnlyPlace()
{
    unmount(m_folder);
}
