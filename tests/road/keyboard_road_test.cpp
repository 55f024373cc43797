#include "app/main_window.h"
#include "app/startup.h"
#include "samples/player/modal_watcher.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QTextEdit>

#include <stdexcept>

namespace {

constexpr int MoreThanAllStops = 60;

/// Somebody who has no mouse: knows the window by where the focus is.
class CKeys
{
public:
    explicit CKeys(CMainWindow& window)
        : m_window(window)
    {
    }

    void press(Qt::Key key, int times = 1) const
    {
        for (int i = 0; i < times; ++i) {
            QTest::keyClick(QApplication::focusWidget(), key);
        }
    }

    /// Goes on with the tab key until the widget of that name has the focus.
    void goTo(const QString& name) const
    {
        for (int stop = 0; stop < MoreThanAllStops; ++stop) {
            if (QApplication::focusWidget() == nullptr) {
                // What a window manager does when a dialog has gone.
                QApplication::setActiveWindow(&m_window);
            }
            const QWidget* focus = QApplication::focusWidget();
            if (focus != nullptr && focus->objectName() == name) {
                return;
            }
            QTest::keyClick(focus != nullptr ? QApplication::focusWidget() : &m_window,
                            Qt::Key_Tab);
        }
        throw std::runtime_error("the tab key doesn't lead to " + name.toStdString());
    }

    void type(const QString& text) const
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
    }

    void fill(const QString& name, const QString& text) const
    {
        goTo(name);
        type(text);
    }

    void pressButton(const QString& name) const
    {
        goTo(name);
        press(Qt::Key_Space);
    }

private:
    CMainWindow& m_window;
};

QStringList linesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))
               : QStringList();
}

} // namespace

/// A calibration without a mouse, from the deck to the combined file.
class CKeyboardRoadTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startup::fillConstants(); }
    void theKeyboardAloneCalibrates();

private:
    void loadDeck(const CKeys& keys) const;
    void varyRollingFriction(const CKeys& keys) const;
    void chooseExport(const CKeys& keys) const;
    void runJob(const CKeys& keys, CModalWatcher& dialogs, const QString& work) const;

    CTestEnvironment m_environment;
};

void CKeyboardRoadTest::loadDeck(const CKeys& keys) const
{
    keys.fill("m_leDeckFilePath", SAMPLE_FOLDER "/column.zek");
    keys.fill("m_leAdditionalFilesPath", SAMPLE_FOLDER "/box.txt");
    keys.pressButton("m_pbNextButton");
}

void CKeyboardRoadTest::varyRollingFriction(const CKeys& keys) const
{
    keys.goTo("m_treeWidget");
    keys.press(Qt::Key_Home);
    keys.press(Qt::Key_Return);
    keys.goTo("m_materialListWidget");
    keys.press(Qt::Key_Home);
    keys.press(Qt::Key_Space);
    keys.goTo("m_parameterListWidget");
    keys.press(Qt::Key_Home);
    keys.press(Qt::Key_Right, 2);
    keys.press(Qt::Key_Enter);
    for (const char* number : {"0.3", "0.6"}) {
        keys.pressButton("m_pbAdd");
        keys.goTo("m_tableWidget");
        keys.press(Qt::Key_Return);
        keys.type(number);
        keys.press(Qt::Key_Return);
    }
    keys.goTo("m_pbNextButton");
}

void CKeyboardRoadTest::chooseExport(const CKeys& keys) const
{
    keys.press(Qt::Key_Space);
    keys.goTo("m_rbNoPostProcessing");
    keys.press(Qt::Key_Right);
    keys.pressButton("m_pbNextButton");
    keys.fill("sbNumProcs", "1");
    keys.pressButton("m_pbNextButton");
}

void CKeyboardRoadTest::runJob(const CKeys& keys, CModalWatcher& dialogs, const QString& work) const
{
    dialogs.answerNextFileDialog({ORVA_SAMPLE});
    keys.pressButton("m_pbORVAExeLocationSelect");
    keys.fill("m_leJobSaveLocation", work);
    keys.pressButton("m_pbGenerateJob");
    keys.fill("m_sbConcurrentSimulations", "2");
    keys.pressButton("m_pbStartSimulating");
}

void CKeyboardRoadTest::theKeyboardAloneCalibrates()
{
    const QString work = m_environment.newFolder();
    CMainWindow window;
    CModalWatcher dialogs;
    const CKeys keys(window);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));

    loadDeck(keys);
    varyRollingFriction(keys);
    // The deck's value as a copy, and the two that were typed.
    QCOMPARE(window.findChild<QLabel*>("m_lblGeneratedCasesNo")->text(), QStringLiteral("3"));
    chooseExport(keys);
    runJob(keys, dialogs, work);
    auto* cases = window.findChild<QListWidget*>("m_listOngoingSimulations");
    QCOMPARE(cases->count(), 3);

    keys.goTo("m_listOngoingSimulations");
    keys.press(Qt::Key_Home);
    keys.press(Qt::Key_Return);
    const auto* inspector = window.findChild<QTextEdit*>("m_inspectorDetails");
    QVERIFY2(inspector->toPlainText().contains("column0"), qPrintable(inspector->toPlainText()));
    keys.pressButton("m_pbNextButton");

    const QString folder = work + "/JobSpec/JobFileLocation";
    keys.fill("m_leDistributedFilePath", folder);
    keys.pressButton("m_pbGenerateMasterResults");
    QCOMPARE(dialogs.texts(), QStringList{"Operation Complete"});
    const QStringList settling = linesOf(folder + "/CollatedResults.csv").filter("Settling time");
    QCOMPARE(settling.size(), 3);
    QVERIFY(settling.at(2).startsWith("2,"));
}

TARNEL_TEST_MAIN(CKeyboardRoadTest)

#include "keyboard_road_test.moc"
