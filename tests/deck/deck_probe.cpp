// A program of the deck tests for what ends a process:
//   deck_probe load <deck.zek>              loads the deck and prints its name
//   deck_probe data <0.h5>                  reads the data file alone
//   deck_probe page <deck.zek>              types the path into the page
//   deck_probe long-name <0.h5> <length>    writes an interaction whose key has that length
//   deck_probe long-pair <0.h5> <length>    writes a JKR pair whose second name has that length
//   deck_probe long-adhesion <0.h5> <length>  writes an adhesion pair, likewise

#include "deck/creator_data.h"
#include "deck/deck_loader_frame.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QLineEdit>

#include <iostream>
#include <string>

namespace {

void load(const QString& path)
{
    CDeckSerializer serializer;
    const std::string name = DeckLoading::loadDeck(serializer, path).m_sName;
    std::cout << "loaded " << name << std::endl;
}

void readData(const QString& path)
{
    CDeckSerializer serializer;
    CCreatorData record;
    DeckLoading::readDataFile(serializer, path.toStdString(), record);
    std::cout << "read" << std::endl;
}

void typeIntoPage(const QString& path)
{
    CDeckLoaderFrame page;
    page.findChild<QLineEdit*>(QStringLiteral("m_leDeckFilePath"))->setText(path);
    std::cout << "typed" << std::endl;
}

template <class Map>
void renameFirst(Map& map, const std::string& key)
{
    auto node = map.extract(map.begin());
    node.key() = key;
    map.insert(std::move(node));
}

void renameIn(CCreatorData& record, const QString& command, const std::string& name)
{
    if (command == QLatin1String("long-pair")) {
        renameFirst(record.m_surfaceSurface.m_hertzMindlinJkr, "x<>" + name);
    } else if (command == QLatin1String("long-adhesion")) {
        renameFirst(record.m_surfaceSurface.m_edinburghAdhesion, "x<>" + name);
    } else {
        renameFirst(record.m_interactions, name);
    }
}

void writeLongName(const QString& command, const QString& path, std::size_t length)
{
    CDeckSerializer serializer;
    CCreatorData record;
    H5::H5File file(path.toStdString(), H5F_ACC_RDWR);
    serializer.walk(file, record, CDeckSerializer::Read);
    renameIn(record, command, std::string(length, 'y'));
    serializer.walk(file, record, CDeckSerializer::Write);
    std::cout << "written" << std::endl;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const CTestEnvironment environment;
    const QStringList arguments = QCoreApplication::arguments();
    const QString command = arguments.value(1);
    const QString path = arguments.value(2);
    if (command == QLatin1String("load")) {
        load(path);
    } else if (command == QLatin1String("data")) {
        readData(path);
    } else if (command == QLatin1String("page")) {
        typeIntoPage(path);
    } else if (command.startsWith(QLatin1String("long-"))) {
        writeLongName(command, path, arguments.value(3).toUInt());
    } else {
        return 2;
    }
    return 0;
}
