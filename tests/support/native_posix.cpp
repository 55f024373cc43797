#include "tests/support/native.h"

#include "deck/app_settings.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdint>

bool Native::isAbort(QProcess::ExitStatus status, int exitCode)
{
    return status == QProcess::CrashExit && exitCode == SIGABRT;
}

QByteArray Native::inTextMode(QByteArray lines)
{
    return lines;
}

QByteArray Native::fromTextMode(QByteArray bytes)
{
    return bytes;
}

QByteArray Native::fromTextFile(const QByteArray& bytes)
{
    return bytes;
}

QString Native::python()
{
    return QStringLiteral("/usr/bin/python3");
}

QByteArray Native::storedSettings()
{
    QFile file(CAppSettings::instance()->settings().fileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString Native::temporaryFolderVariable()
{
    return QStringLiteral("TMPDIR");
}

bool Native::endsDescendants()
{
    return true;
}

bool Native::canAskToEnd()
{
    return true;
}

QString Native::drive()
{
    return QString();
}

QString Native::programSuffix()
{
    return QString();
}

QString Native::unaskablePath(const QString& folder, const QString& name)
{
    QString path = folder + QLatin1Char('/') + name;
    return QFile::link(path, path) ? path : QString();
}

std::string Native::unremovablePath(const std::string& heldFile)
{
    return heldFile.substr(0, heldFile.rfind('/') + 1) + std::string(300, 'x');
}

bool Native::useGermanNumbers(const QString& folder)
{
    const QString locale = folder + QStringLiteral("/de_DE.UTF-8");
    const QStringList making = {"-i", "de_DE", "-f", "UTF-8", locale};
    return QProcess::execute(QStringLiteral("localedef"), making) == 0 &&
           qputenv("LOCPATH", folder.toLocal8Bit()) &&
           std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
}

bool Native::makeWritable(void* data, std::size_t size)
{
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(data) & ~(page - 1);
    const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(data) + size;
    return ::mprotect(reinterpret_cast<void*>(begin), end - begin, PROT_READ | PROT_WRITE) == 0;
}

CHeldFile::CHeldFile(const QString& path, Holder holder)
    : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC))
{
    m_bHeld = ::flock(m_descriptor, holder == Reader ? LOCK_SH : LOCK_EX) == 0;
}

CHeldFile::~CHeldFile()
{
    ::close(m_descriptor);
}

// A regular file by its attributes, and every read of it at its start fails.
CUnreadableFile::CUnreadableFile(const QString& path)
{
    QFile::link(QStringLiteral("/proc/self/mem"), path);
}

CUnreadableFile::~CUnreadableFile() = default;

// The walk has the outer folder open, and no number is left for another one.
CClosedFolder::CClosedFolder(const QString& /*folder*/)
{
    const int lowestFree = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(lowestFree);
    rlimit limit = {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    m_formerLimit = limit.rlim_cur;
    limit.rlim_cur = static_cast<rlim_t>(lowestFree + 1);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

CClosedFolder::~CClosedFolder()
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = m_formerLimit;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}
