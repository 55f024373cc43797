#include "tests/support/test_environment.h"
#include "tests/widgets/double_box.h"
#include "widgets/integer_spin_box.h"

#include <QApplication>
#include <QLocale>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QLocale GERMAN(QLocale::German);

// A parent hands its locale down, also to the constructor of the box.
struct SGermanPage
{
    QWidget page;
    CDoubleSpinBox* box;

    SGermanPage()
    {
        page.setLocale(GERMAN);
        box = new CDoubleSpinBox(&page);
        box->setup(-1e9, 1e9, CUnitsNone::instance(), 6, false, false);
    }
};

} // namespace

class SpinBoxLocaleTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void boxWritesInItsOwnLocale_data();
    void boxWritesInItsOwnLocale();
    void ownTextStandsForItsNumberInAnyLocale_data();
    void ownTextStandsForItsNumberInAnyLocale();
    void typedCommaEndsTheNumber();
    void typedDecimalPointOfTheProgram();
    void localeOfTheDefaultGivesTheSeparator();
    void localeThatComesLaterKeepsTheNumber();
    void stepLooksForThePointOfTheSystem();
    void wholeNumbersWithSeparators();
};

void SpinBoxLocaleTest::boxWritesInItsOwnLocale_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");

    QTest::newRow("below one") << 0.05 << "0,05 ";
    QTest::newRow("small") << 1.5e-7 << "1,5e-07 ";
    QTest::newRow("above one") << 12.5 << "12,5 ";
    QTest::newRow("thousands without separator") << 4567.1 << "4567,1 ";
    QTest::newRow("negative thousands") << -4567.1 << "-4567,1 ";
}

void SpinBoxLocaleTest::boxWritesInItsOwnLocale()
{
    QFETCH(double, number);
    SGermanPage german;
    QSignalSpy changed(german.box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    german.box->setValue(number);
    QTEST(german.box->text(), "text");
    QVERIFY(german.box->value() == number);
    QCOMPARE(changed.count(), 1);
}

void SpinBoxLocaleTest::ownTextStandsForItsNumberInAnyLocale_data()
{
    QTest::addColumn<QLocale>("locale");

    QTest::newRow("german") << GERMAN;
    QTest::newRow("english") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("swiss") << QLocale(QLocale::German, QLocale::Switzerland);
    QTest::newRow("french") << QLocale(QLocale::French);
    QTest::newRow("arabic") << QLocale(QLocale::Arabic, QLocale::Egypt);
    QTest::newRow("system") << QLocale::system();
}

void SpinBoxLocaleTest::ownTextStandsForItsNumberInAnyLocale()
{
    QFETCH(QLocale, locale);
    for (const double number : {0.123456789, 1e-7, -0.5, 4567.125, 1234567.5}) {
        CDoubleBox box(-1e9, 1e9);
        box.setLocale(locale);
        box.setValue(number);
        QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
        box.pressReturn();
        box.leave();
        QVERIFY(box.storedValue() == number);
        QVERIFY(box.value() == number);
        QVERIFY(box.hasAcceptableInput());
        QCOMPARE(modified.count(), 0);
    }
}

// Typed numbers are judged without a locale, wherever the box stands: what was a number last
// counts.
void SpinBoxLocaleTest::typedCommaEndsTheNumber()
{
    SGermanPage german;
    german.box->setValue(4.5);
    QSignalSpy modified(german.box, &CDoubleSpinBox::valueModified);
    german.box->selectAll();
    QTest::keyClicks(german.box, QStringLiteral("7,25"));
    QTest::keyClick(german.box, Qt::Key_Return);
    QCOMPARE(german.box->storedValue(), 7.0);
    QCOMPARE(german.box->text(), QStringLiteral("7 "));
    QCOMPARE(modified.count(), 1);
}

void SpinBoxLocaleTest::typedDecimalPointOfTheProgram()
{
    CDoubleBox box(0, 10);
    box.type(QStringLiteral("0.25"));
    box.pressReturn();
    QCOMPARE(box.storedValue(), 0.25);
    QCOMPARE(box.text(), QStringLiteral("0.25 "));
}

void SpinBoxLocaleTest::localeOfTheDefaultGivesTheSeparator()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    CDoubleBox box(0, 1e9);
    box.setValue(4567.5);
    QCOMPARE(box.text(), QStringLiteral("4567.5 "));
    box.setValue(999);
    QCOMPARE(box.text(), QStringLiteral("999 "));
}

void SpinBoxLocaleTest::localeThatComesLaterKeepsTheNumber()
{
    CDoubleBox box(0, 10);
    box.setValue(0.123456789);
    box.setLocale(GERMAN);
    box.leave();
    QVERIFY(box.storedValue() == 0.123456789);
    QCOMPARE(box.text(), QStringLiteral("0,123457 "));
}

// The box writes a point; a system that writes a comma finds none and takes every character for a
// digit.
void SpinBoxLocaleTest::stepLooksForThePointOfTheSystem()
{
    const bool commaSystem = QLocale::system().decimalPoint() == QLatin1Char(',');
    QCOMPARE(commaSystem, qgetenv("LC_ALL").startsWith("de"));
    CDoubleBox box(0, 1000);
    box.setValue(123.45);
    box.lineEdit()->setSelection(1, 1);
    QCOMPARE(box.singleStep(), commaSystem ? 10000.0 : 10.0);
    box.setValue(0.052);
    box.enter();
    QCOMPARE(box.singleStep(), commaSystem ? 10000.0 : 0.001);
}

void SpinBoxLocaleTest::wholeNumbersWithSeparators()
{
    CIntegerSpinBox box;
    box.setLocale(GERMAN);
    box.setup(0, 99999, CUnitsNone::instance());
    box.setValue(12345);
    QCOMPARE(box.text(), QStringLiteral("12.345 "));
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.value(), 12345);
    QCOMPARE(box.storedValue(), 12345);
    QCOMPARE(modified.count(), 0);
}

TARNEL_TEST_MAIN(SpinBoxLocaleTest)
#include "spin_box_locale_test.moc"
