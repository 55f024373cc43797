#include "app/startup.h"

#include "platform/settings_apart.h"
#include "tests/support/native.h"

#include <QApplication>
#include <QLineEdit>
#include <QLocale>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

namespace {

/// What is done in the event loop of the process that is played.
std::function<void(QWidget&)> s_inTheLoop;

QWidget* mainWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("CMainWindow")) {
            return widget;
        }
    }
    return nullptr;
}

void enterTheLoop()
{
    QTimer::singleShot(0, [] {
        QWidget* const window = mainWindow();
        if (window == nullptr) {
            QCoreApplication::exit(-1);
            return;
        }
        s_inTheLoop(*window);
    });
    // A process that its window doesn't end ends all the same.
    QTimer::singleShot(10000, [] { QCoreApplication::exit(-2); });
}

/// Plays a whole process with what follows its name; gives its exit code.
int play(const std::vector<std::string>& arguments, const std::function<void(QWidget&)>& inTheLoop)
{
    std::vector<std::string> texts = {"tarnel"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    s_inTheLoop = inTheLoop;
    return startup::run(static_cast<int>(texts.size()), pointers.data());
}

} // namespace
Q_COREAPP_STARTUP_FUNCTION(enterTheLoop)

/// The process from its arguments to its exit code, as `main` gives and takes them.
class CProcessLifeTest : public QObject
{
    Q_OBJECT

private slots:
    void theProcessLastsUntilTheWindowIsClosed();
    void theWindowGoesBeforeTheApplication();
    void theExitCodeIsTheEventLoops();
    void argumentsReachTheApplicationAlone();
    void numbersAreNeutralInAnyLanguage();
};

void CProcessLifeTest::theProcessLastsUntilTheWindowIsClosed()
{
    bool shown = false;
    const int exitCode = play({}, [&shown](QWidget& window) {
        shown = window.isVisible();
        window.close();
    });
    QVERIFY(shown);
    QCOMPARE(exitCode, 0);
}

void CProcessLifeTest::theWindowGoesBeforeTheApplication()
{
    bool gone = false;
    play({}, [&gone](QWidget& window) {
        connect(&window, &QObject::destroyed,
                [&gone] { gone = QCoreApplication::instance() != nullptr; });
        window.close();
    });
    QVERIFY(gone);
    QVERIFY(QCoreApplication::instance() == nullptr);
}

void CProcessLifeTest::theExitCodeIsTheEventLoops()
{
    QCOMPARE(play({}, [](QWidget& /*window*/) { QCoreApplication::exit(5); }), 5);
}

void CProcessLifeTest::argumentsReachTheApplicationAlone()
{
    QStringList arguments;
    QString style;
    QString deck = QStringLiteral("never seen");
    const int exitCode = play({"-style", "windows", "--help", "deck.zek"}, [&](QWidget& window) {
        arguments = QApplication::arguments();
        style = QApplication::style()->objectName();
        deck = window.findChild<QLineEdit*>(QStringLiteral("m_leDeckFilePath"))->text();
        window.close();
    });
    QCOMPARE(exitCode, 0);
    QCOMPARE(arguments, QStringList({"tarnel", "--help", "deck.zek"}));
    QCOMPARE(style, QStringLiteral("windows"));
    QCOMPARE(deck, QString());
}

void CProcessLifeTest::numbersAreNeutralInAnyLanguage()
{
    const QTemporaryDir locales;
    {
        int count = 1;
        char name[] = "test";
        char* names[] = {name, nullptr};
        const QCoreApplication toRunChildren(count, names);
        QVERIFY(Native::useGermanNumbers(locales.path()));
    }
    qputenv("LC_ALL", "de_DE.UTF-8");
    QCOMPARE(std::stod("0.5"), 0.0);
    double half = 0.0;
    QLocale locale(QLocale::German);
    play({}, [&](QWidget& window) {
        half = std::stod("0.5");
        locale = QLocale();
        window.close();
    });
    QCOMPARE(half, 0.5);
    QCOMPARE(locale, QLocale::c());
}

// Without an application: each of the processes makes its own.
int main(int argc, char** argv)
{
    const QTemporaryDir folder;
    const CSettingsApart settings(folder.path());
    CProcessLifeTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "process_life_test.moc"
