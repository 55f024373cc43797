// One half of a test between two platforms:
//   deck_exchange write <folder>  writes a deck of each format there, and changes it as a case
//   would deck_exchange read <folder>   loads those decks and compares all that they hold
// The exit code is the number of decks that aren't what they should be.

#include "deck/deck_loading.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/support/test_environment.h"

#include <QApplication>

#include <cstdio>

namespace {

constexpr int LastFormat = 14;

std::string nameOf(int format)
{
    return "deck" + std::to_string(format);
}

CCreatorData recordOf(int format)
{
    return changedRecord(expectedRecord(fullDeck(format), format, nameOf(format)));
}

void writeDecks(const std::string& folder)
{
    for (int format = 0; format <= LastFormat; ++format) {
        CTestEnvironment::reset();
        const DeckPaths deck = writeDeck(fullDeck(format), folder, nameOf(format));
        // The walk takes the format from the deck that was read last.
        DeckTestFiles::read(deck);
        CCreatorData record = recordOf(format);
        DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
    }
}

int readDecks(const std::string& folder)
{
    int wrong = 0;
    for (int format = 0; format <= LastFormat; ++format) {
        // Decks of one format leave names for those of the next.
        CTestEnvironment::reset();
        CDeckSerializer serializer;
        const std::string path = folder + "/" + nameOf(format) + ".zek";
        const CCreatorData found = DeckLoading::loadDeck(serializer, QString::fromStdString(path));
        if (!(found == recordOf(format))) {
            std::fprintf(stderr, "%s is read as another deck\n", path.c_str());
            ++wrong;
        }
    }
    return wrong;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const CTestEnvironment environment;
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        return 99;
    }
    const std::string folder = arguments[2].toStdString();
    if (arguments[1] == QLatin1String("write")) {
        writeDecks(folder);
        return 0;
    }
    return readDecks(folder);
}
