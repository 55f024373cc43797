#include "deck/deck_loader_frame.h"

#include "tests/support/named_child.h"
#include "tests/support/test_environment.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>
#include <QtTest>

namespace {

struct SPage
{
    CDeckLoaderFrame frame;

    template <class Widget = QWidget>
    Widget* find(const char* name) const
    {
        return &named<Widget>(frame, QLatin1String(name));
    }
};

} // namespace

class TestDeckLoaderForm : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void formStandsAsItShould()
    {
        const SPage page;
        QCOMPARE(page.frame.objectName(), QStringLiteral("DeckLoaderFrameUI"));
        QCOMPARE(page.frame.windowTitle(), QStringLiteral("DeckLoaderFrameUI"));
        QCOMPARE(page.frame.sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
        QCOMPARE(page.frame.sizePolicy().verticalPolicy(), QSizePolicy::MinimumExpanding);
        QVERIFY(page.find<QLabel>("m_lblDeckFile")->text() == "Locate deck to use:");
        QVERIFY(page.find<QLabel>("label")->text() == "Input valid ORVA simulation deck");
        const auto* additional = page.find<QLabel>("m_lblAdditionalFiles");
        QCOMPARE(additional->text(), QStringLiteral("Additional Files:"));
        QVERIFY(additional->alignment().testFlag(Qt::AlignRight));
        QVERIFY(additional->alignment().testFlag(Qt::AlignVCenter));
        const auto* deckEdit = page.find<QLineEdit>("m_leDeckFilePath");
        QCOMPARE(deckEdit->placeholderText(), QStringLiteral("Please select a .zek file"));
        QCOMPARE(deckEdit->maximumSize(), QSize(QWIDGETSIZE_MAX, 22));
        const auto* additionalEdit = page.find<QLineEdit>("m_leAdditionalFilesPath");
        QCOMPARE(additionalEdit->placeholderText(), QString());
        QCOMPARE(additionalEdit->maximumSize(), QSize(QWIDGETSIZE_MAX, 22));
        for (const char* name : {"m_pbZekFilesSelect", "m_pbAdditionalFilesSelect"}) {
            const auto* button = page.find<QPushButton>(name);
            QCOMPARE(button->text(), QStringLiteral("..."));
            QCOMPARE(button->maximumSize(), QSize(22, 22));
            QVERIFY(!button->autoDefault());
        }
        QVERIFY(page.frame.isVisible());
    }

    void formHasItsSizeUntilItIsShown()
    {
        QWidget widget;
        Ui::DeckLoaderFrameUI form;
        form.setupUi(&widget);
        QCOMPARE(widget.size(), QSize(334, 242));
    }

    void cellsOfTheGrid_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("column");
        QTest::newRow("m_lblAdditionalFiles") << 3 << 0;
        QTest::newRow("m_pbZekFilesSelect") << 2 << 2;
        QTest::newRow("m_Logo") << 5 << 1;
        QTest::newRow("m_lblDeckFile") << 2 << 0;
        QTest::newRow("m_leAdditionalFilesPath") << 3 << 1;
        QTest::newRow("m_leDeckFilePath") << 2 << 1;
        QTest::newRow("label") << 1 << 1;
        QTest::newRow("m_pbAdditionalFilesSelect") << 3 << 2;
        QTest::newRow("textBrowser") << 0 << 1;
    }
    void cellsOfTheGrid()
    {
        QFETCH(int, row);
        QFETCH(int, column);
        const SPage page;
        const auto* grid = page.frame.findChild<QGridLayout*>(QStringLiteral("gridLayout_2"));
        QVERIFY(page.frame.findChild<QVBoxLayout*>(QStringLiteral("verticalLayout")) != nullptr);
        const int index = grid->indexOf(page.find(QTest::currentDataTag()));
        QVERIFY(index >= 0);
        int itemRow = -1;
        int itemColumn = -1;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(index, &itemRow, &itemColumn, &rows, &columns);
        QCOMPARE(itemRow, row);
        QCOMPARE(itemColumn, column);
        QVERIFY(grid->itemAtPosition(6, 1)->spacerItem() != nullptr);
    }

    void spacerBelowTheLogoGrowsDownwards()
    {
        const SPage page;
        const auto* grid = page.frame.findChild<QGridLayout*>(QStringLiteral("gridLayout_2"));
        const QSpacerItem* spacer = grid->itemAtPosition(6, 1)->spacerItem();
        QVERIFY(spacer != nullptr);
        QCOMPARE(spacer->sizeHint(), QSize(0, 0));
        QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
        QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::MinimumExpanding);
        QCOMPARE(grid->count(), 10);
    }

    void pageHoldsTheGrid()
    {
        const SPage page;
        const auto* column = qobject_cast<QVBoxLayout*>(page.frame.layout());
        QVERIFY(column != nullptr);
        QCOMPARE(column->objectName(), QStringLiteral("verticalLayout"));
        QCOMPARE(column->count(), 1);
        QCOMPARE(column->itemAt(0)->layout()->objectName(), QStringLiteral("gridLayout_2"));
    }

    void logoHasRoomAndNoText()
    {
        QWidget widget;
        Ui::DeckLoaderFrameUI form;
        form.setupUi(&widget);
        QCOMPARE(form.m_Logo->text(), QString());
        QCOMPARE(form.m_Logo->minimumSize(), QSize(64, 64));
    }

    void introductionReadsLineByLine()
    {
        const SPage page;
        const QString list = QString(12, QLatin1Char(' ')) + QStringLiteral("> ");
        const QStringList expected = {
            QStringLiteral("Tarnel is designed to support the ORVA Material Model calibration "
                           "process.  The primary function of Tarnel is to allow users to create "
                           "a suitable ORVA Material Model by generating a number of simulations "
                           "with different material parameters, run the simulations and analyse "
                           "the results."),
            QStringLiteral("To Use:"),
            list + QStringLiteral("Create an ORVA simulation matching the required experiment. "
                                  "This can be a user defined simulation or one chosen from the "
                                  "ORVA Calibration Kit."),
            list + QStringLiteral("Use the Parameter Editor to choose which material model inputs "
                                  "to vary."),
            list + QStringLiteral("Choosing what kind of Analysis you would like to perform on "
                                  "each simulation, either by specifying an ORVA dfg file for "
                                  "post-processing or a Python Analysis script."),
            list + QStringLiteral("Determine the Processing Options and settings for the "
                                  "simulation variants."),
            list + QStringLiteral("Save the job specification and run the simulations, either "
                                  "locally or generating and exporting the decks to run on a "
                                  "separate machine."),
            list + QStringLiteral("Collating the results of any exported CSV files that have been "
                                  "created as a combined results file."),
        };
        const QString text = page.find<QTextBrowser>("textBrowser")->toPlainText();
        QCOMPARE(text.split(QLatin1Char('\n')), expected);
    }

    void introductionIsSmallAndTight()
    {
        const SPage page;
        const QTextDocument* document = page.find<QTextBrowser>("textBrowser")->document();
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            const QTextBlockFormat format = block.blockFormat();
            QCOMPARE(format.topMargin() + format.bottomMargin() + format.leftMargin() +
                         format.rightMargin(),
                     0.0);
            const QFont font = block.begin().fragment().charFormat().font();
            QCOMPARE(font.family(), QStringLiteral("MS Shell Dlg 2"));
            QCOMPARE(font.pointSize(), 8);
        }
    }
};

TARNEL_TEST_MAIN(TestDeckLoaderForm)
#include "deck_loader_form_test.moc"
