// Stands for Python in tests under Wine: hands its arguments and its folder to the Python of the
// system that Wine runs on, and its output and exit code back. Wine starts such programs, but gives
// neither their output nor their end; both come through files.

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

#include <windows.h>

#include <cstdio>

namespace {

constexpr int PATIENCE_MS = 120000;

const wchar_t* wide(const QString& text)
{
    return reinterpret_cast<const wchar_t*>(text.utf16());
}

/// The name of a file for the system below; empty where this isn't Wine.
QString hostPath(const QString& path)
{
    using HostName = char*(__cdecl*)(const wchar_t*);
    const auto hostName = reinterpret_cast<HostName>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (hostName == nullptr) {
        return QString();
    }
    char* name = hostName(wide(QDir::toNativeSeparators(path)));
    const QString text = QString::fromUtf8(name);
    ::HeapFree(::GetProcessHeap(), 0, name);
    return text;
}

QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

QString script(const QStringList& arguments, const QString& exchange)
{
    static const QRegularExpression absolute(QStringLiteral("^[A-Za-z]:[/\\\\]"));
    QString call =
        QStringLiteral("cd %1 && { /usr/bin/python3").arg(quoted(hostPath(QDir::currentPath())));
    for (const QString& argument : arguments) {
        const bool isPath = absolute.match(argument).hasMatch();
        call += QLatin1Char(' ') + quoted(isPath ? hostPath(argument) : argument);
    }
    const QString folder = quoted(hostPath(exchange));
    return call + QStringLiteral("; } </dev/null >%1/out 2>%1/err\n"
                                 "echo $? >%1/part && mv %1/part %1/code\n")
                      .arg(folder);
}

bool startShell(const QString& file)
{
    QString line = QStringLiteral("sh \"%1\"").arg(hostPath(file));
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    return ::CreateProcessW(L"Z:\\bin\\sh", const_cast<wchar_t*>(wide(line)), nullptr, nullptr,
                            FALSE, 0, nullptr, nullptr, &startup, &process) != 0;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void passOn(const QString& path, std::FILE* stream)
{
    const QByteArray text = contentOf(path);
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stream);
    std::fflush(stream);
}

int fail(const char* cause)
{
    std::fprintf(stderr, "host_python: %s\n", cause);
    return 120;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir exchange;
    if (hostPath(exchange.path()).isEmpty()) {
        return fail("this isn't Wine");
    }
    QFile file(exchange.filePath(QStringLiteral("call.sh")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(script(application.arguments().mid(1), exchange.path()).toUtf8()) < 0) {
        return fail("no file can be written");
    }
    file.close();
    if (!startShell(file.fileName())) {
        return fail("no shell starts");
    }
    const QString code = exchange.filePath(QStringLiteral("code"));
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(code)) {
        if (clock.hasExpired(PATIENCE_MS)) {
            return fail("no end is seen");
        }
        QThread::msleep(5);
    }
    passOn(exchange.filePath(QStringLiteral("out")), stdout);
    passOn(exchange.filePath(QStringLiteral("err")), stderr);
    return contentOf(code).trimmed().toInt();
}
