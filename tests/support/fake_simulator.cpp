// Stands for the simulator in tests: does what TARNEL_FAKE_<n> says for the case whose number is
// <n>, or else what TARNEL_FAKE says. Behaviours are separated by ";", arguments stand behind ":".

#include "tests/support/binary_output.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>

namespace {

/// What the command line says of the case.
struct Case
{
    QString folder;
    QString deckStem;
    QString number;
};

Case caseOf(const QStringList& arguments)
{
    const QFileInfo deck(arguments.value(arguments.indexOf(QStringLiteral("-i")) + 1));
    const QString folder = deck.dir().dirName();
    return {deck.path(), deck.completeBaseName(), folder.mid(QStringLiteral("Job").size())};
}

void print(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        std::abort();
    }
    file.write(bytes);
}

void writeText(const Case& theCase, const char* name, const QByteArray& bytes)
{
    write(theCase.folder + QLatin1Char('/') + QLatin1String(name), bytes);
}

void sleepFor(const QString& milliseconds)
{
    QThread::msleep(milliseconds.toULong());
}

/// As good as forever for a test, yet nothing stays behind a test that was broken off.
[[noreturn]] void hang()
{
    QThread::sleep(60);
    std::_Exit(98);
}

void printSlowLines(const QString& count)
{
    for (int line = 0; line < count.toInt(); ++line) {
        print("line " + QByteArray::number(line) + "\n");
        QThread::msleep(10);
    }
}

void waitForFile(const QString& path)
{
    for (int round = 0; !QFile::exists(path); ++round) {
        if (round == 10000) {
            std::_Exit(99);
        }
        QThread::msleep(2);
    }
}

/// A child in the simulator's own process group that lives on when the simulator ends.
void leaveChildBehind(const Case& theCase)
{
    auto* const child = new QProcess;
    child->setProcessChannelMode(QProcess::ForwardedChannels);
    child->start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child")});
    if (!child->waitForStarted()) {
        std::abort();
    }
    writeText(theCase, "child.pid", QByteArray::number(child->processId()));
}

QByteArray inputOf(const QStringList& arguments)
{
    return arguments.join(QLatin1Char('|')).toUtf8() + "\n" + QDir::currentPath().toUtf8() + "\n";
}

using Behaviour = std::function<void(const Case&, const QString&)>;

std::map<QString, Behaviour> behaviours()
{
    const auto dataFile = [](const Case& theCase, const char* name) {
        return theCase.folder + QLatin1Char('/') + theCase.deckStem + QStringLiteral("_data/") +
               QLatin1String(name);
    };
    return {
        {"exit", [](const Case&, const QString& code) { std::_Exit(code.toInt()); }},
        {"crash", [](const Case&, const QString&) { std::abort(); }},
        {"hang", [](const Case&, const QString&) { hang(); }},
        {"sleep", [](const Case&, const QString& time) { sleepFor(time); }},
        {"slow lines", [](const Case&, const QString& count) { printSlowLines(count); }},
        {"print", [](const Case&, const QString& text) { print(text.toUtf8() + "\n"); }},
        {"print without newline", [](const Case&, const QString& text) { print(text.toUtf8()); }},
        {"print hex",
         [](const Case&, const QString& hex) { print(QByteArray::fromHex(hex.toLatin1())); }},
        {"long output",
         [](const Case&, const QString& size) { print(QByteArray(size.toInt(), 'x')); }},
        {"close output", [](const Case&, const QString&) { std::fclose(stdout); }},
        {"await", [](const Case&, const QString&) { print("Awaiting Client connection...\r\n"); }},
        {"complain",
         [](const Case&, const QString& text) { std::fputs(qPrintable(text), stderr); }},
        {"arguments",
         [](const Case& theCase, const QString&) {
             writeText(theCase, "arguments", inputOf(QCoreApplication::arguments()));
         }},
        {"started",
         [](const Case& theCase, const QString&) { writeText(theCase, "started", "yes"); }},
        {"pid",
         [](const Case& theCase, const QString&) {
             writeText(theCase, "simulator.pid",
                       QByteArray::number(QCoreApplication::applicationPid()));
         }},
        {"wait for", [](const Case&, const QString& path) { waitForFile(path); }},
        {"time step",
         [dataFile](const Case& theCase, const QString&) {
             write(dataFile(theCase, "1.h5"), "a time step");
         }},
        {"time steps",
         [dataFile](const Case& theCase, const QString& count) {
             for (int step = 1; step <= count.toInt(); ++step) {
                 write(dataFile(theCase, qPrintable(QString::number(step))), "a time step");
             }
         }},
        {"csv",
         [](const Case& theCase, const QString&) {
             writeText(theCase, "results.csv", "EXTRACTED DATA\nTIME:,0.1\nTIME,Query 1\n0.1,1\n");
         }},
        {"leave a child", [](const Case& theCase, const QString&) { leaveChildBehind(theCase); }},
    };
}

QString scriptOf(const Case& theCase)
{
    const QByteArray own = "TARNEL_FAKE_" + theCase.number.toLatin1();
    return qEnvironmentVariable(qEnvironmentVariableIsSet(own.constData()) ? own.constData()
                                                                           : "TARNEL_FAKE");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    useBinaryOutput();
    if (application.arguments().contains(QStringLiteral("--child"))) {
        hang();
    }
    const Case theCase = caseOf(application.arguments());
    const std::map<QString, Behaviour> known = behaviours();
    for (const QString& step : scriptOf(theCase).split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        known.at(step.section(QLatin1Char(':'), 0, 0))(theCase, step.section(QLatin1Char(':'), 1));
    }
    std::_Exit(0);
}
