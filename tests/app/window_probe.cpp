// A program of the window's tests for what ends a process. It types a deck's path into the first
// page of the real window, presses Next and clicks its way to a field, all below the event loop:
//   window_probe <deck.zek>                     enters the parameter page
//   window_probe <deck.zek> add <label>         ... and adds to the entry's first field
//   window_probe <deck.zek> toggle <label>      ... and toggles the check box of what was added

#include "app/main_window.h"
#include "app/startup.h"
#include "tests/support/named_child.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <iostream>

namespace {

void clickAt(QAbstractItemView& view, const QRect& rect)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

void chooseFirstField(const CMainWindow& window, const QString& label)
{
    auto& tree = named<QTreeWidget>(window, "m_treeWidget");
    tree.expandAll();
    QTreeWidgetItem* item = tree.findItems(label, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    tree.scrollToItem(item);
    clickAt(tree, tree.visualItemRect(item));
    for (const char* name : {"m_materialListWidget", "m_parameterListWidget"}) {
        auto& list = named<QListWidget>(window, name);
        clickAt(list, list.visualItemRect(list.item(0)));
    }
}

void play(const CMainWindow& window, const QStringList& arguments)
{
    named<QLineEdit>(window, "m_leDeckFilePath").setText(arguments.value(1));
    std::cout << "loaded" << std::endl;
    QTest::mouseClick(&named<QPushButton>(window, "m_pbNextButton"), Qt::LeftButton);
    std::cout << "entered" << std::endl;
    if (arguments.size() < 4) {
        return;
    }
    chooseFirstField(window, arguments.value(3));
    std::cout << "chosen" << std::endl;
    QTest::mouseClick(&named<QPushButton>(window, "m_pbAdd"), Qt::LeftButton);
    std::cout << "added" << std::endl;
    if (arguments.value(2) == QLatin1String("toggle")) {
        const auto& table = named<QTableWidget>(window, "m_tableWidget");
        table.cellWidget(0, 1)->findChild<QCheckBox*>()->click();
        std::cout << "toggled" << std::endl;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const CTestEnvironment environment;
    startup::fillConstants();
    CMainWindow window;
    window.resize(1200, 900);
    window.show();
    QTimer::singleShot(0, [&window] {
        play(window, QCoreApplication::arguments());
        QCoreApplication::quit();
    });
    return QApplication::exec();
}
