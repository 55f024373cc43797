#include "tests/support/test_environment.h"
#include "widgets/caret_step.h"

#include <QApplication>
#include <QtTest>

class CaretStepTest : public QObject
{
    Q_OBJECT

private slots:
    void digitUnderTheCaretGivesTheStep_data();
    void digitUnderTheCaretGivesTheStep();
    void enteringPicksTheDigit_data();
    void enteringPicksTheDigit();
    void restOfAWholeNumberGivesTheStep_data();
    void restOfAWholeNumberGivesTheStep();
};

void CaretStepTest::digitUnderTheCaretGivesTheStep_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");
    QTest::addColumn<double>("step");

    QTest::newRow("tens of a fraction") << "123.45" << 1 << 10.0;
    QTest::newRow("hundreds of a fraction") << "123.45" << 0 << 100.0;
    QTest::newRow("the point") << "123.45" << 3 << 1.0;
    QTest::newRow("first digit behind the point") << "123.45" << 4 << 0.1;
    QTest::newRow("behind the last digit") << "123.45" << 6 << 0.001;
    QTest::newRow("leading digit of a whole number") << "123" << 0 << 100.0;
    QTest::newRow("units of a whole number") << "123" << 2 << 1.0;
    QTest::newRow("behind a whole number") << "123" << 3 << 0.1;
    QTest::newRow("before the point of an exponent") << "1.5e-05" << 0 << 1e-05;
    QTest::newRow("behind the point of an exponent") << "1.5e-05" << 2 << 1e-06;
    QTest::newRow("at the e") << "1.5e-05" << 3 << 0.0;
    QTest::newRow("in the exponent") << "1.5e-05" << 6 << 0.0;
    QTest::newRow("no point before the exponent") << "1e-07" << 0 << 1e-07;
    QTest::newRow("two digits before the exponent") << "12e+06" << 0 << 1e+07;
    QTest::newRow("capital exponent") << "1.5E-05" << 5 << 0.0;
    QTest::newRow("another decimal point is no point") << "0,05" << 0 << 1000.0;
}

void CaretStepTest::digitUnderTheCaretGivesTheStep()
{
    QFETCH(QString, text);
    QFETCH(int, pos);
    QTEST(CaretStep::atPosition(text, pos, QLatin1Char('.')), "step");
}

void CaretStepTest::enteringPicksTheDigit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");

    QTest::newRow("whole number") << "450" << 0;
    QTest::newRow("negative whole number") << "-450" << 1;
    QTest::newRow("last significant digit of a fraction") << "0.0520" << 4;
    QTest::newRow("units of 12.000") << "12.000" << 1;
    QTest::newRow("units of 10.000") << "10.000" << 1;
    QTest::newRow("zero with a point") << "0.000" << 0;
    QTest::newRow("nothing before the point") << ".000" << -1;
    QTest::newRow("exponent with a point") << "1.5e-05" << 6;
    QTest::newRow("exponent without a point") << "1e-07" << 0;
}

void CaretStepTest::enteringPicksTheDigit()
{
    QFETCH(QString, text);
    QTEST(CaretStep::entryPosition(text, QLatin1Char('.')), "pos");
}

void CaretStepTest::restOfAWholeNumberGivesTheStep_data()
{
    QTest::addColumn<QString>("rest");
    QTest::addColumn<double>("step");

    QTest::newRow("units") << "5" << 1.0;
    QTest::newRow("thousands with a comma") << "4,567" << 1000.0;
    QTest::newRow("another separator counts as a digit") << "4.567" << 10000.0;
}

void CaretStepTest::restOfAWholeNumberGivesTheStep()
{
    QFETCH(QString, rest);
    QTEST(CaretStep::ofWholeNumber(rest), "step");
}

TARNEL_TEST_MAIN(CaretStepTest)
#include "caret_step_test.moc"
