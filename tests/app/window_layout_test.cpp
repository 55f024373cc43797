#include "app/main_window.h"

#include "tests/support/test_environment.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTreeWidget>

#include <memory>

namespace {

const QStringList Tabs = {"m_tabDeckLoader",        "m_tabParameterEditor", "m_tabPostProccessing",
                          "m_tabProcessingOptions", "m_tabSubmitJob",       "m_tabResultsAnalysis"};

QString whereabouts(const QWidget* widget)
{
    const QRect place = widget->geometry();
    return QStringLiteral("%1 at %2, %3, %4 by %5")
        .arg(widget->objectName())
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

/// The width that the text alone takes; 0 for a widget that shows no text of its own.
int textWidth(const QWidget* widget)
{
    QString text;
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        text = label->text();
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        text = button->text();
    } else if (const auto* box = qobject_cast<const QGroupBox*>(widget)) {
        text = box->title();
    } else if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
        text = line->text().isEmpty() ? line->placeholderText() : QString();
    }
    return widget->fontMetrics().horizontalAdvance(text);
}

} // namespace

/// The window at the sizes of its forms, of a small and of a large screen.
class CWindowLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_window.reset(); }
    void nothingIsClipped_data();
    void nothingIsClipped();
    void listsTakeTheRoomAndButtonsStay_data();
    void listsTakeTheRoomAndButtonsStay();
    void labelsOfOneColumnEndAtOneLine();
    void theWindowFitsASmallScreen();

private:
    template <class Widget = QWidget>
    Widget* find(const QString& name) const;
    void open(int page, const QString& choice = {}) const;
    void resize(const QSize& size) const;

    std::unique_ptr<CMainWindow> m_window;
};

void CWindowLayoutTest::init()
{
    CTestEnvironment::reset();
    m_window = std::make_unique<CMainWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

template <class Widget>
Widget* CWindowLayoutTest::find(const QString& name) const
{
    auto* found = m_window->findChild<Widget*>(name);
    if (found == nullptr) {
        qFatal("there is no %s", qPrintable(name));
    }
    return found;
}

void CWindowLayoutTest::open(int page, const QString& choice) const
{
    find<QAction>(Tabs[page])->trigger();
    if (!choice.isEmpty()) {
        auto* button = find<QAbstractButton>(choice);
        for (QWidget* above = button; above != m_window.get(); above = above->parentWidget()) {
            above->setEnabled(true);
        }
        button->click();
    }
    QCoreApplication::processEvents();
}

void CWindowLayoutTest::resize(const QSize& size) const
{
    m_window->resize(size);
    QCoreApplication::processEvents();
}

void CWindowLayoutTest::nothingIsClipped_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QSize>("size");
    struct SPage
    {
        const char* title;
        int index;
        const char* choice;
    };
    const SPage pages[] = {{"Load Deck", 0, ""},
                           {"Parameter Editor", 1, ""},
                           {"export", 2, "m_rbPostProcessingORVA"},
                           {"script", 2, "m_rbPythonPostProcessing"},
                           {"Processing Options", 3, ""},
                           {"Submit Job", 4, ""},
                           {"distributed", 4, "m_rbSimulationDistributed"},
                           {"Results Analysis", 5, ""}};
    for (const SPage& page : pages) {
        for (const QSize& size : {QSize(0, 0), QSize(1280, 800), QSize(1280, 720)}) {
            QTest::newRow(
                qPrintable(QStringLiteral("%1, %2 wide").arg(page.title).arg(size.width()) +
                           QStringLiteral(" %1 high").arg(size.height())))
                << page.index << page.choice << size;
        }
    }
}

void CWindowLayoutTest::nothingIsClipped()
{
    QFETCH(int, page);
    QFETCH(QString, choice);
    QFETCH(QSize, size);
    resize(size);
    open(page, choice);
    int looked = 0;
    for (const QWidget* widget : m_window->centralWidget()->findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->objectName().isEmpty() ||
            widget->objectName().startsWith(QLatin1String("qt_"))) {
            continue;
        }
        ++looked;
        QVERIFY2(widget->width() >= textWidth(widget), qPrintable(whereabouts(widget)));
        // What a spin box asks for is the width of its largest number, of 300 digits.
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width() ||
                     widget->maximumWidth() < widget->minimumSizeHint().width() ||
                     qobject_cast<const QAbstractSpinBox*>(widget) != nullptr,
                 qPrintable(whereabouts(widget)));
        QVERIFY2(widget->height() >= widget->fontMetrics().height() ||
                     qobject_cast<const QFrame*>(widget) != nullptr,
                 qPrintable(whereabouts(widget)));
        const QRect inWindow(widget->mapTo(m_window.get(), QPoint()), widget->size());
        QVERIFY2(m_window->rect().contains(inWindow), qPrintable(whereabouts(widget)));
    }
    QVERIFY(looked > 5);
}

void CWindowLayoutTest::listsTakeTheRoomAndButtonsStay_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("growing");
    QTest::addColumn<QStringList>("staying");
    QTest::newRow("Load Deck") << 0 << QStringList{"textBrowser"}
                               << QStringList{"m_pbZekFilesSelect", "m_pbNextButton"};
    QTest::newRow("Parameter Editor") << 1 << QStringList{"m_treeWidget", "m_materialListWidget"}
                                      << QStringList{"m_pbAdd", "m_pbRemove", "m_pbBackButton"};
    QTest::newRow("Submit Job") << 4
                                << QStringList{"m_listOngoingSimulations", "m_inspectorDetails"}
                                << QStringList{"m_pbGenerateJob", "m_pbJobLoad",
                                               "m_pbStartSimulating", "m_sbConcurrentSimulations"};
    QTest::newRow("Results Analysis")
        << 5 << QStringList()
        << QStringList{"m_pbGenerateMasterResults", "m_pbDistributedSelectFile"};
}

void CWindowLayoutTest::listsTakeTheRoomAndButtonsStay()
{
    QFETCH(int, page);
    QFETCH(QStringList, growing);
    QFETCH(QStringList, staying);
    open(page);
    QWidget* const current = find<QStackedWidget>("m_editStack")->currentWidget();
    const auto sizeOf = [&](const QString& name) {
        auto* widget = current->findChild<QWidget*>(name);
        return (widget != nullptr ? widget : find(name))->size();
    };
    QMap<QString, QSize> before;
    for (const QString& name : growing + staying) {
        before[name] = sizeOf(name);
    }
    QMap<QString, int> lines;
    for (const QLineEdit* line : current->findChildren<QLineEdit*>()) {
        lines[line->objectName()] = line->width();
    }
    const QSize room = QSize(1280, 1000) - m_window->size();
    resize(QSize(1280, 1000));

    for (const QString& name : qAsConst(growing)) {
        const QSize grown = sizeOf(name) - before[name];
        QVERIFY2(grown.height() > room.height() * 9 / 10, qPrintable(name));
        QVERIFY2(grown.width() > room.width() / 4, qPrintable(name));
    }
    for (const QString& name : qAsConst(staying)) {
        QCOMPARE(sizeOf(name), before[name]);
    }
    for (const QLineEdit* line : current->findChildren<QLineEdit*>()) {
        if (line->isVisible() && !line->objectName().startsWith(QLatin1String("qt_"))) {
            QVERIFY2(line->width() >= lines[line->objectName()] + room.width() * 9 / 10,
                     qPrintable(whereabouts(line)));
        }
    }
}

void CWindowLayoutTest::labelsOfOneColumnEndAtOneLine()
{
    const QList<QStringList> columns = {
        {"m_lblDeckFile", "m_lblAdditionalFiles"},
        {"m_lblDfgLocation", "m_lblQsvLocation"},
        {"m_lblPythonLocation", "m_lblPythonAdditionalFlags"},
        {"lblTotalTime"},
        {"tlSimulatorEngine", "tlCPUcores", "tlDeviceIndex"},
        {"m_lblTau", "m_lblPsi", "m_lblRadiusCoef"},
        {"m_lblJobSaveLocation", "m_lblJobLoadLocation", "m_lblORVAExeLocation"},
    };
    const QList<QPair<int, QString>> pages = {
        {0, {}}, {2, "m_rbPostProcessingORVA"}, {2, "m_rbPythonPostProcessing"}, {3, {}}, {4, {}}};
    int compared = 0;
    for (const auto& page : pages) {
        open(page.first, page.second);
        for (const QStringList& column : columns) {
            const auto* first = find<QLabel>(column.first());
            if (!first->isVisible()) {
                continue;
            }
            for (const QString& name : column) {
                const auto* label = find<QLabel>(name);
                const int end = label->mapTo(m_window.get(), label->rect().topRight()).x();
                const int wanted = first->mapTo(m_window.get(), first->rect().topRight()).x();
                QVERIFY2(end == wanted, qPrintable(whereabouts(label)));
                QVERIFY2(label->alignment().testFlag(Qt::AlignRight) ||
                             label->sizeHint().width() == label->width(),
                         qPrintable(whereabouts(label)));
                ++compared;
            }
        }
    }
    QCOMPARE(compared, 16);
}

void CWindowLayoutTest::theWindowFitsASmallScreen()
{
    for (int page = 0; page < Tabs.size(); ++page) {
        open(page);
        QVERIFY2(m_window->minimumSizeHint().width() <= 1280, qPrintable(Tabs[page]));
        QVERIFY2(m_window->minimumSizeHint().height() <= 720, qPrintable(Tabs[page]));
    }
}

TARNEL_TEST_MAIN(CWindowLayoutTest)

#include "window_layout_test.moc"
