#include "app/main_window.h"
#include "app/startup.h"
#include "platform/settings_apart.h"
#include "samples/player/modal_watcher.h"
#include "samples/player/sample_road.h"
#include "samples/player/user_hand.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <cstdio>
#include <exception>
#include <map>

// Plays a whole calibration on the sample through the wizard's window, with mouse and keyboard.

namespace {

constexpr int ShownLines = 12;

void say(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

/// Content and time of every file of a folder, by path.
std::map<QString, QByteArray> fingerprints(const QDir& folder)
{
    std::map<QString, QByteArray> prints;
    QDirIterator files(folder.absolutePath(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly)) {
            const qint64 time = files.fileInfo().lastModified().toMSecsSinceEpoch();
            prints[files.filePath()] =
                QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256) +
                QByteArray::number(time);
        }
    }
    return prints;
}

void showFirstLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        throw std::runtime_error("The combined file can't be read.");
    }
    say(path);
    for (int line = 0; line < ShownLines && !file.atEnd(); ++line) {
        say(QStringLiteral("    ") + QString::fromUtf8(file.readLine()).trimmed().left(100));
    }
}

const std::map<QString, Road>& roads()
{
    static const std::map<QString, Road> known = {
        {QStringLiteral("none"), Road::NoAnalysis},
        {QStringLiteral("export"), Road::Export},
        {QStringLiteral("python"), Road::Python},
        {QStringLiteral("distributed"), Road::Distributed},
    };
    return known;
}

struct SOptions
{
    CSampleRoad::SPlaces places;
    Road road = Road::Export;
    QString collate; ///< folder of cases that ran elsewhere; empty for a whole road
    QSize window;    ///< empty for the size that the forms ask for
    bool stay = false;
};

/// "1280x800"; an empty size for anything else.
QSize sizeOf(const QString& text)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    return sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
}

/// The simulator's stand-in: in the build one folder up, in a package beside this program.
QString standIn()
{
    const QFileInfo player(QCoreApplication::applicationFilePath());
    const QString ending = player.suffix().isEmpty() ? QString() : "." + player.suffix();
    const QDir folder = player.dir();
    const QString beside = folder.filePath(QStringLiteral("orva_sample") + ending);
    const QString above = folder.filePath(QStringLiteral("../orva_sample") + ending);
    return QDir::cleanPath(QFileInfo::exists(beside) ? beside : above);
}

SOptions parsedOptions(const QApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays a calibration on the sample through the wizard's window."));
    parser.addHelpOption();
    const QCommandLineOption sample(QStringLiteral("sample"),
                                    QStringLiteral("Folder of the sample deck."),
                                    QStringLiteral("folder"));
    const QCommandLineOption engine(
        QStringLiteral("engine"),
        QStringLiteral("Program that runs the cases of the heap, a sample for real engines; the "
                       "stand-in runs those of the column."),
        QStringLiteral("program"));
    const QCommandLineOption work(QStringLiteral("work"), QStringLiteral("Folder for the jobs."),
                                  QStringLiteral("folder"), QStringLiteral("out/calibration"));
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      QStringLiteral("Folder for a picture of each page."),
                                      QStringLiteral("folder"));
    const QCommandLineOption road(QStringLiteral("road"),
                                  QStringLiteral("none, export, python or distributed."),
                                  QStringLiteral("road"), QStringLiteral("export"));
    const QCommandLineOption collate(QStringLiteral("collate"),
                                     QStringLiteral("Only combine the results of this folder."),
                                     QStringLiteral("folder"));
    const QCommandLineOption window(QStringLiteral("window"),
                                    QStringLiteral("Size of the window, for instance 1280x800."),
                                    QStringLiteral("size"));
    const QCommandLineOption stay(QStringLiteral("stay"),
                                  QStringLiteral("Leave the window open at the end."));
    parser.addOptions({sample, engine, work, pictures, road, collate, window, stay});
    parser.process(application);
    SOptions options;
    options.window = sizeOf(parser.value(window));
    if (roads().count(parser.value(road)) == 0 || !parser.isSet(sample) ||
        parser.isSet(window) == options.window.isEmpty()) {
        parser.showHelp(2);
    }
    options.places.sample = QDir(QDir(parser.value(sample)).absolutePath());
    options.places.work = QDir(QDir(parser.value(work)).absolutePath());
    options.places.pictures = parser.value(pictures);
    options.places.simulator = standIn();
    options.places.deck = columnSample();
    if (parser.isSet(engine)) {
        options.places.simulator = QDir(parser.value(engine)).absolutePath();
        options.places.deck = heapSample();
    }
    options.road = roads().at(parser.value(road));
    options.collate = parser.value(collate);
    options.stay = parser.isSet(stay);
    return options;
}

/// An analysis asks for conda; where the machine has none, the sample's stand-in serves.
void provideConda(const QDir& sample)
{
    if (QStandardPaths::findExecutable(QStringLiteral("conda")).isEmpty()) {
        qputenv("PATH", qgetenv("PATH") + QDir::listSeparator().toLatin1() +
                            QFile::encodeName(sample.filePath(QStringLiteral("stand_ins"))));
        say(QStringLiteral("There is no conda here: the sample's stand-in serves."));
    }
}

void play(CMainWindow& window, const SOptions& options)
{
    CUserHand hand(window);
    CModalWatcher dialogs;
    if (options.road == Road::Python) {
        provideConda(options.places.sample);
    }
    const auto before = fingerprints(options.places.sample);
    CSampleRoad road(hand, dialogs, options.places, say);
    const QString result =
        options.collate.isEmpty() ? road.play(options.road) : road.combine(options.collate);
    if (fingerprints(options.places.sample) != before) {
        throw std::runtime_error("The sample deck or a file beside it was changed.");
    }
    say(QStringLiteral("The sample deck and its neighbours are unchanged."));
    showFirstLines(result);
}

} // namespace

int main(int argc, char** argv)
{
    // The hand that plays knows Qt's own file dialogs.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    startup::keepNumbersNeutral();
    const SOptions options = parsedOptions(application);
    options.places.work.mkpath(QStringLiteral("."));
    if (!options.places.pictures.isEmpty()) {
        QDir().mkpath(options.places.pictures);
    }
    // A play must not replace the paths that the user's own wizard has stored.
    const CSettingsApart settings(options.places.work.filePath(QStringLiteral("settings")));
    startup::fillConstants();
    CMainWindow window;
    if (!options.window.isEmpty()) {
        window.resize(options.window);
    }
    window.show();
    const bool shown = QTest::qWaitForWindowExposed(&window);
    try {
        if (!shown) {
            throw std::runtime_error("The window doesn't appear.");
        }
        play(window, options);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "The sample could not be played: %s\n", failure.what());
        return 1;
    }
    return options.stay ? QApplication::exec() : 0;
}
