#include "bench/operations.h"

#include "app/startup.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <exception>
#include <map>

namespace {

struct Operation
{
    void (*run)(const QStringList& arguments);
    QStringList arguments;
};

const std::map<QString, Operation>& operations()
{
    static const std::map<QString, Operation> all = {
        {"make-deck", {Operations::makeTableDeck, {"folder", "rows"}}},
        {"deck-read", {Operations::readDeck, {"deck"}}},
        {"deck-plain-read", {Operations::readPlainly, {"data file"}}},
        {"tree", {Operations::enterParameters, {"deck"}}},
        {"make-job", {Operations::makeJob, {"folder", "cases", "MiB of the data file"}}},
        {"matrix-text", {Operations::writeMatrixText, {"deck folder", "cases", "file"}}},
        {"matrix", {Operations::writeMatrix, {"deck folder", "cases", "folder"}}},
        {"matrix-load", {Operations::loadJob, {"job"}}},
        {"folders", {Operations::prepareFolders, {"job", "case root"}}},
        {"distributed", {Operations::prepareDistributed, {"job", "case root"}}},
        {"run", {Operations::runCases, {"job", "simulator", "at a time"}}},
        {"cancel", {Operations::cancelCases, {"job", "simulator"}}},
        {"collate", {Operations::collate, {"case root", "file"}}},
    };
    return all;
}

int usage()
{
    std::fprintf(stderr, "Name an operation:\n");
    for (const auto& [name, operation] : operations()) {
        std::fprintf(stderr, "  %s <%s>\n", qPrintable(name),
                     qPrintable(operation.arguments.join("> <")));
    }
    return 2;
}

int run(const QStringList& words)
{
    const auto found = operations().find(words.value(1));
    if (found == operations().end() || words.size() != 2 + found->second.arguments.size()) {
        return usage();
    }
    try {
        found->second.run(words.mid(2));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(words[1]), failure.what());
        return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    startup::keepNumbersNeutral();
    // The settings of whoever measures stay as they are.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    startup::fillConstants();
    return run(QApplication::arguments());
}
