#include "tests/deck/deck_test_files.h"

#include "tests/support/native.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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

QString renamed(const DeckPaths& deck, const QString& stem)
{
    const QFileInfo old(QString::fromStdString(deck.deck.string()));
    const QDir folder = old.dir();
    const QString path = folder.filePath(stem + ".zek");
    QDir().rename(old.filePath(), path);
    QDir().rename(folder.filePath(old.completeBaseName() + "_data"),
                  folder.filePath(stem + "_data"));
    return path;
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
    environment.insert(Native::temporaryFolderVariable(), folder.path());
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setWorkingDirectory(folder.path());
    child.start(program, arguments);
    child.waitForFinished(60000);
    return {Native::isAbort(child.exitStatus(), child.exitCode()), child.exitCode(),
            Native::fromTextMode(child.readAllStandardOutput()),
            Native::fromTextMode(child.readAllStandardError())};
}

SChildEnd runProbe(const QStringList& arguments)
{
    return runProgram(QStringLiteral(TARNEL_DECK_PROBE), arguments);
}

SChildEnd runPython(const QString& script, const QStringList& arguments)
{
    return runProgram(Native::python(), QStringList{QStringLiteral("-c"), script} + arguments);
}

} // namespace DeckTestFiles
