#include "tests/deck/deck_test_files.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace fs = std::filesystem;

namespace DeckTestFiles {
DeckPaths newDeck(const DeckDescription& description, const std::string& stem)
{
    static const QTemporaryDir root;
    static int count = 0;
    const QString folder = root.filePath(QStringLiteral("deck %1").arg(count++));
    QDir().mkpath(folder);
    return writeDeck(description, folder.toStdString(), stem);
}

void walk(const DeckPaths& deck, CCreatorData& record, unsigned int mode)
{
    CDeckSerializer serializer;
    H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
    serializer.walk(file, record, mode);
}

CCreatorData read(const DeckPaths& deck)
{
    CCreatorData record;
    walk(deck, record, CDeckSerializer::Read);
    return record;
}

QByteArray bytesOf(const fs::path& path)
{
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

fs::file_time_type makeOld(const fs::path& path)
{
    fs::last_write_time(path, fs::last_write_time(path) - std::chrono::hours(1000));
    return fs::last_write_time(path);
}

SChildEnd runProgram(const QString& program, const QStringList& arguments)
{
    // What a child that ends by an abort leaves behind goes with this folder.
    const QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), folder.path());
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setWorkingDirectory(folder.path());
    child.start(program, arguments);
    child.waitForFinished(60000);
    return {child.exitStatus() == QProcess::CrashExit, child.exitCode(),
            child.readAllStandardOutput(), child.readAllStandardError()};
}

SChildEnd runProbe(const QStringList& arguments)
{
    return runProgram(QStringLiteral(TARNEL_DECK_PROBE), arguments);
}

SChildEnd runPython(const QString& script, const QStringList& arguments)
{
    return runProgram(QStringLiteral("/usr/bin/python3"),
                      QStringList{QStringLiteral("-c"), script} + arguments);
}

} // namespace DeckTestFiles
