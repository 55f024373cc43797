#include "parameters/parameter_editor_frame.h"

#include "tests/support/named_child.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QBoxLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

namespace {

template <class Layout>
Layout* layoutNamed(const QWidget& page, const char* name)
{
    return page.findChild<Layout*>(QLatin1String(name));
}

/// The names of what a layout holds, in order; "|" is a spacer.
QStringList itemsOf(const QLayout* layout)
{
    QStringList names;
    for (int index = 0; layout != nullptr && index < layout->count(); ++index) {
        QLayoutItem* item = layout->itemAt(index);
        if (item->widget() != nullptr) {
            names << item->widget()->objectName();
        } else {
            names << (item->layout() != nullptr ? item->layout()->objectName() : "|");
        }
    }
    return names;
}

} // namespace

class CParameterEditorFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void thePageHasItsNameTitleAndSize();
    void layoutsHoldTheirItemsInOrder_data();
    void layoutsHoldTheirItemsInOrder();
    void rowsOfFramesAreTightWithFiveBetween_data();
    void rowsOfFramesAreTightWithFiveBetween();
    void groupBoxesHaveTheirTitles_data();
    void groupBoxesHaveTheirTitles();
    void lineWidthsAreZero_data();
    void lineWidthsAreZero();
    void theTreeHasItsTwoColumns();
    void theFieldsListAdjustsToItsContents();
    void theParametersListIsOneLowStripedRow();
    void theTableStartsEmptyWithItsSettings();
    void theTablesHeadersAreHiddenAndCascade();
    void theLabelsHaveTheirTexts();
    void theButtonsStandBeforeASpacer();
};

void CParameterEditorFormTest::init()
{
    CTestEnvironment::reset();
}

void CParameterEditorFormTest::thePageHasItsNameTitleAndSize()
{
    const CParameterEditorFrame page;
    QCOMPARE(page.objectName(), QStringLiteral("ParameterEditorFrameUI"));
    QCOMPARE(page.windowTitle(), QStringLiteral("ParameterEditorFrameUI"));
    QCOMPARE(page.size(), QSize(604, 689));
}

void CParameterEditorFormTest::layoutsHoldTheirItemsInOrder_data()
{
    QTest::addColumn<QStringList>("items");
    QTest::newRow("verticalLayout_6")
        << QStringList({"frame", "horizontalFrame_2", "m_gbParameters"});
    QTest::newRow("horizontalLayout") << QStringList({"m_gbProperties", "m_gbMaterials"});
    QTest::newRow("verticalLayout_5") << QStringList({"m_treeWidget"});
    QTest::newRow("verticalLayout_3") << QStringList({"m_materialListWidget"});
    QTest::newRow("horizontalLayout_3")
        << QStringList({"m_lblGeneratedCasesText", "m_lblGeneratedCasesNo"});
    QTest::newRow("verticalLayout_4")
        << QStringList({"m_parameterListWidget", "m_tableWidget", "horizontalLayout_4"});
    QTest::newRow("horizontalLayout_4") << QStringList({"m_pbRemove", "m_pbAdd", "|"});
}

void CParameterEditorFormTest::layoutsHoldTheirItemsInOrder()
{
    QFETCH(QStringList, items);
    const CParameterEditorFrame page;
    const auto* layout = layoutNamed<QBoxLayout>(page, QTest::currentDataTag());
    QCOMPARE(itemsOf(layout), items);
    const bool vertical = QByteArray(QTest::currentDataTag()).startsWith("vertical");
    QCOMPARE(layout->direction(), vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void CParameterEditorFormTest::rowsOfFramesAreTightWithFiveBetween_data()
{
    QTest::addColumn<QString>("frame");
    QTest::newRow("horizontalLayout") << "frame";
    QTest::newRow("horizontalLayout_3") << "horizontalFrame_2";
}

void CParameterEditorFormTest::rowsOfFramesAreTightWithFiveBetween()
{
    QFETCH(QString, frame);
    const CParameterEditorFrame page;
    const auto* layout = layoutNamed<QHBoxLayout>(page, QTest::currentDataTag());
    QVERIFY(layout != nullptr);
    QCOMPARE(layout->spacing(), 5);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(named<QFrame>(page, frame).layout(), layout);
}

void CParameterEditorFormTest::groupBoxesHaveTheirTitles_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("m_gbProperties") << "Properties";
    QTest::newRow("m_gbMaterials") << "Fields";
    QTest::newRow("m_gbParameters") << "Parameters";
}

void CParameterEditorFormTest::groupBoxesHaveTheirTitles()
{
    QFETCH(QString, title);
    const CParameterEditorFrame page;
    const auto& box = named<QGroupBox>(page, QLatin1String(QTest::currentDataTag()));
    QCOMPARE(box.title(), title);
    QVERIFY(!box.isCheckable());
}

void CParameterEditorFormTest::lineWidthsAreZero_data()
{
    QTest::addColumn<int>("width");
    for (const char* name : {"frame", "m_treeWidget", "m_materialListWidget",
                             "m_lblGeneratedCasesText", "m_lblGeneratedCasesNo"}) {
        QTest::newRow(name) << 0;
    }
    QTest::newRow("m_parameterListWidget") << 1;
}

void CParameterEditorFormTest::lineWidthsAreZero()
{
    QFETCH(int, width);
    const CParameterEditorFrame page;
    QCOMPARE(named<QFrame>(page, QLatin1String(QTest::currentDataTag())).lineWidth(), width);
}

void CParameterEditorFormTest::theTreeHasItsTwoColumns()
{
    const CParameterEditorFrame page;
    const auto& tree = named<QTreeWidget>(page, QStringLiteral("m_treeWidget"));
    QCOMPARE(tree.columnCount(), 2);
    QCOMPARE(tree.headerItem()->text(0), QStringLiteral("Properties"));
    QCOMPARE(tree.headerItem()->text(1), QStringLiteral("Number of Variances"));
    QCOMPARE(tree.topLevelItemCount(), 0);
}

void CParameterEditorFormTest::theFieldsListAdjustsToItsContents()
{
    const CParameterEditorFrame page;
    const auto& list = named<QListWidget>(page, QStringLiteral("m_materialListWidget"));
    QCOMPARE(list.sizeAdjustPolicy(), QAbstractScrollArea::AdjustToContents);
    QCOMPARE(list.count(), 0);
}

void CParameterEditorFormTest::theParametersListIsOneLowStripedRow()
{
    const CParameterEditorFrame page;
    const auto& list = named<QListWidget>(page, QStringLiteral("m_parameterListWidget"));
    QCOMPARE(list.maximumHeight(), 60);
    QCOMPARE(list.flow(), QListView::LeftToRight);
    QVERIFY(list.alternatingRowColors());
    QCOMPARE(list.styleSheet(), QStringLiteral("alternate-background-color: #f0f0f0;"));
    QCOMPARE(list.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(list.sizeAdjustPolicy(), QAbstractScrollArea::AdjustToContents);
    QCOMPARE(list.autoScrollMargin(), 16);
    QCOMPARE(list.count(), 0);
}

void CParameterEditorFormTest::theTableStartsEmptyWithItsSettings()
{
    const CParameterEditorFrame page;
    const auto& table = named<QTableWidget>(page, QStringLiteral("m_tableWidget"));
    QCOMPARE(table.rowCount(), 0);
    QCOMPARE(table.columnCount(), 0);
    QCOMPARE(table.maximumHeight(), 60);
    QVERIFY(table.showGrid());
    QCOMPARE(int(table.gridStyle()), 1);
    QCOMPARE(table.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(table.sizeAdjustPolicy(), QAbstractScrollArea::AdjustToContents);
}

void CParameterEditorFormTest::theTablesHeadersAreHiddenAndCascade()
{
    const CParameterEditorFrame page;
    const auto& table = named<QTableWidget>(page, QStringLiteral("m_tableWidget"));
    QVERIFY(table.horizontalHeader()->isHidden());
    QVERIFY(table.horizontalHeader()->cascadingSectionResizes());
    QCOMPARE(table.horizontalHeader()->minimumSectionSize(), 50);
    QVERIFY(table.verticalHeader()->isHidden());
    QVERIFY(table.verticalHeader()->cascadingSectionResizes());
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), 38);
}

void CParameterEditorFormTest::theLabelsHaveTheirTexts()
{
    const CParameterEditorFrame page;
    const auto& text = named<QLabel>(page, QStringLiteral("m_lblGeneratedCasesText"));
    QCOMPARE(text.text(), QStringLiteral("Cases to be Generated:"));
    QCOMPARE(int(text.alignment()), 130);
    QCOMPARE(named<QLabel>(page, QStringLiteral("m_lblGeneratedCasesNo")).text(),
             QStringLiteral("0"));
    QWidget bare;
    Ui::ParameterEditorFrameUI form;
    form.setupUi(&bare);
    QCOMPARE(form.m_lblGeneratedCasesNo->text(), QStringLiteral("Undefined number of Cases"));
}

void CParameterEditorFormTest::theButtonsStandBeforeASpacer()
{
    const CParameterEditorFrame page;
    QCOMPARE(named<QPushButton>(page, QStringLiteral("m_pbRemove")).text(),
             QStringLiteral("Remove"));
    QCOMPARE(named<QPushButton>(page, QStringLiteral("m_pbAdd")).text(), QStringLiteral("Add"));
    const auto* row = layoutNamed<QHBoxLayout>(page, "horizontalLayout_4");
    QVERIFY(row != nullptr);
    QCOMPARE(row->spacing(), 5);
    const QSpacerItem* spacer = row->itemAt(2)->spacerItem();
    QCOMPARE(spacer->sizeHint(), QSize(40, 20));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
}

TARNEL_TEST_MAIN(CParameterEditorFormTest)
#include "parameter_editor_form_test.moc"
