#include "app/main_window.h"

#include "tests/support/test_environment.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

const char* const Tabs[] = {"m_tabDeckLoader",      "m_tabParameterEditor",
                            "m_tabPostProccessing", "m_tabProcessingOptions",
                            "m_tabSubmitJob",       "m_tabResultsAnalysis"};

/// Of the radio buttons of a group, the tab key reaches the one that is chosen.
bool takesTab(const QWidget* widget)
{
    const auto* radio = qobject_cast<const QRadioButton*>(widget);
    if (radio != nullptr && !radio->isChecked()) {
        return false;
    }
    return widget->isVisible() && widget->isEnabled() && widget->focusProxy() == nullptr &&
           (widget->focusPolicy() & Qt::TabFocus) != 0;
}

/// The child of `ancestor` that `widget` stands in, or is.
const QWidget* branchBelow(const QWidget* ancestor, const QWidget* widget)
{
    while (widget->parentWidget() != ancestor) {
        widget = widget->parentWidget();
    }
    return widget;
}

/// Whether a reader who goes from left to right and down meets `one` before `other`.
bool comesBefore(const QWidget* one, const QWidget* other)
{
    if (one->isAncestorOf(other) || other->isAncestorOf(one)) {
        return one->isAncestorOf(other);
    }
    const QWidget* common = one->parentWidget();
    while (!common->isAncestorOf(other)) {
        common = common->parentWidget();
    }
    const QRect first = branchBelow(common, one)->geometry();
    const QRect second = branchBelow(common, other)->geometry();
    const int shared = qMin(first.bottom(), second.bottom()) - qMax(first.top(), second.top());
    const bool sideBySide = 2 * shared > qMin(first.height(), second.height());
    return sideBySide ? first.left() < second.left() : first.top() < second.top();
}

QString namesOf(const QList<QWidget*>& widgets)
{
    QStringList names;
    for (const QWidget* widget : widgets) {
        names << widget->objectName();
    }
    return names.join(QLatin1Char(' '));
}

QString sortedNamesOf(QList<QWidget*> widgets)
{
    std::sort(widgets.begin(), widgets.end(), [](const QWidget* one, const QWidget* other) {
        return one->objectName() < other->objectName();
    });
    return namesOf(widgets);
}

} // namespace

/// The window in the hands of somebody without a mouse.
class CTabOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_window.reset(); }
    void theTabKeyFollowsTheEye_data();
    void theTabKeyFollowsTheEye();
    void theTabKeyGoesBackTheSameWay();
    void theDomainFollowsTheSaveInterval();
    void altAndAnArrowTurnThePages();
    void controlAndANumberOpenAPage();

private:
    void open(int page) const;
    template <class Widget = QWidget>
    Widget* find(const QString& name) const;
    QWidget* currentPage() const { return find<QStackedWidget>("m_editStack")->currentWidget(); }
    QList<QWidget*> expectedStops() const;
    QList<QWidget*> stopsOf(Qt::Key key) const;

    std::unique_ptr<CMainWindow> m_window;
};

void CTabOrderTest::init()
{
    CTestEnvironment::reset();
    m_window = std::make_unique<CMainWindow>();
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

template <class Widget>
Widget* CTabOrderTest::find(const QString& name) const
{
    auto* found = m_window->findChild<Widget*>(name);
    if (found == nullptr) {
        qFatal("there is no %s", qPrintable(name));
    }
    return found;
}

void CTabOrderTest::open(int page) const
{
    find<QAction>(QLatin1String(Tabs[page]))->trigger();
}

QList<QWidget*> CTabOrderTest::expectedStops() const
{
    QList<QWidget*> stops;
    for (QWidget* widget : m_window->centralWidget()->findChildren<QWidget*>()) {
        if (takesTab(widget)) {
            stops << widget;
        }
    }
    return stops;
}

/// What gets the focus when `key` is pressed again and again, once round, in the centre of the
/// window.
QList<QWidget*> CTabOrderTest::stopsOf(Qt::Key key) const
{
    QList<QWidget*> stops;
    QWidget* const start = expectedStops().first();
    start->setFocus(Qt::TabFocusReason);
    do {
        stops << QApplication::focusWidget();
        QTest::keyClick(QApplication::focusWidget(), key,
                        key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
    } while (QApplication::focusWidget() != start && stops.size() < 200);
    return stops;
}

void CTabOrderTest::theTabKeyFollowsTheEye_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("pressed");
    QTest::newRow("Load Deck") << 0 << QStringList();
    QTest::newRow("Parameter Editor") << 1 << QStringList();
    QTest::newRow("no analysis") << 2 << QStringList();
    QTest::newRow("export") << 2 << QStringList{"m_rbPostProcessingORVA"};
    QTest::newRow("script") << 2 << QStringList{"m_rbPythonPostProcessing"};
    QTest::newRow("Processing Options") << 3 << QStringList();
    QTest::newRow("all options") << 3
                                 << QStringList{"chkStepLimit", "gbDynamicDomain",
                                                "gbCouplingServer", "m_cbSimulatorEngine"};
    QTest::newRow("Submit Job") << 4 << QStringList();
    QTest::newRow("a loaded job") << 4 << QStringList{"m_pbStartSimulating"};
    QTest::newRow("distributed") << 4 << QStringList{"m_rbSimulationDistributed"};
    QTest::newRow("Results Analysis") << 5 << QStringList();
}

void CTabOrderTest::theTabKeyFollowsTheEye()
{
    QFETCH(int, page);
    QFETCH(QStringList, pressed);
    open(page);
    for (const QString& name : qAsConst(pressed)) {
        auto* widget = find(name);
        // What a deck or a job would enable.
        for (QWidget* above = widget; above != currentPage(); above = above->parentWidget()) {
            above->setEnabled(true);
        }
        if (auto* box = qobject_cast<QGroupBox*>(widget)) {
            box->setChecked(true);
        } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            if (button->isCheckable()) {
                button->setFocus();
                button->click();
            }
        }
    }
    for (QWidget* hidden : {find("sbFixedTime"), find("m_sbConcurrentSimulations")}) {
        hidden->setEnabled(true);
    }
    m_window->resize(1280, 800);
    QCoreApplication::processEvents();

    QList<QWidget*> stops = stopsOf(Qt::Key_Tab);
    for (const QWidget* stop : qAsConst(stops)) {
        QVERIFY2(m_window->centralWidget()->isAncestorOf(stop), qPrintable(namesOf(stops)));
    }
    const QList<QWidget*> expected = expectedStops();
    QCOMPARE(sortedNamesOf(stops), sortedNamesOf(expected));
    // The round began somewhere on the page; it is read from what stands first.
    while (!std::all_of(stops.begin() + 1, stops.end(),
                        [&](const QWidget* other) { return comesBefore(stops.first(), other); })) {
        stops.append(stops.takeFirst());
        QVERIFY2(stops.first() != expected.first(), qPrintable(namesOf(stops)));
    }
    for (int later = 1; later < stops.size(); ++later) {
        QVERIFY2(comesBefore(stops[later - 1], stops[later]),
                 qPrintable(stops[later]->objectName() + " in " + namesOf(stops)));
    }
}

void CTabOrderTest::theTabKeyGoesBackTheSameWay()
{
    for (int index = 0; index < 6; ++index) {
        open(index);
        const QList<QWidget*> there = stopsOf(Qt::Key_Tab);
        QList<QWidget*> back = stopsOf(Qt::Key_Backtab);
        std::reverse(back.begin() + 1, back.end());
        QCOMPARE(namesOf(back), namesOf(there));
    }
}

void CTabOrderTest::theDomainFollowsTheSaveInterval()
{
    open(3);
    find<QGroupBox>("gbDynamicDomain")->setChecked(true);
    find("m_dynamicDomainCheckInterval")->setEnabled(true);
    find("fbWriteEvery")->setFocus();
    for (const char* name :
         {"gbDynamicDomain", "m_dynamicDomainCheckInterval", "m_dynamicDomainNumberOfChecks",
          "m_dynamicDomainParticleDisplacement"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(name));
    }
}

void CTabOrderTest::altAndAnArrowTurnThePages()
{
    auto* stack = find<QStackedWidget>("m_editStack");
    open(1);
    find("m_pbNextButton")->setEnabled(true);
    // A button that is pressed by its shortcut shows it for a moment first.
    QTest::keyClick(currentPage(), Qt::Key_Right, Qt::AltModifier);
    QTRY_COMPARE(stack->currentIndex(), 2);
    QTest::keyClick(currentPage(), Qt::Key_Left, Qt::AltModifier);
    QTRY_COMPARE(stack->currentIndex(), 1);
    QTest::keyClick(currentPage(), Qt::Key_Left, Qt::AltModifier);
    QTRY_COMPARE(stack->currentIndex(), 0);
}

void CTabOrderTest::controlAndANumberOpenAPage()
{
    auto* stack = find<QStackedWidget>("m_editStack");
    for (const int page : {5, 2, 4, 1, 3, 0}) {
        QTest::keyClick(m_window.get(), Qt::Key(Qt::Key_1 + page), Qt::ControlModifier);
        QCOMPARE(stack->currentIndex(), page);
        QVERIFY(find<QAction>(QLatin1String(Tabs[page]))->isChecked());
    }
    QCOMPARE(find<QAbstractButton>("m_pbNextButton")->text(), QStringLiteral("Next"));
    QCOMPARE(find<QAbstractButton>("m_pbBackButton")->text(), QStringLiteral("Back"));
}

TARNEL_TEST_MAIN(CTabOrderTest)

#include "tab_order_test.moc"
