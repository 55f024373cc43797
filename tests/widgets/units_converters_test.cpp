#include "tests/support/own_methods.h"
#include "tests/support/test_environment.h"
#include "tests/widgets/minutes.h"
#include "widgets/unit_vocabulary.h"
#include "widgets/units_none.h"
#include "widgets/units_time.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

namespace {

template <class Array>
QStringList listOf(const Array& texts)
{
    QStringList list;
    for (const QString& text : texts) {
        list << text;
    }
    return list;
}

} // namespace

class UnitsConvertersTest : public QObject
{
    Q_OBJECT

private slots:
    void timeConvertsMinutesByTheGivenUnit();
    void timeConvertsMinutesByTheUnitInUse();
    void timePassesSecondsUnchanged();
    void noneConvertsNothing();
    void labelsNameTheUnitInUse();
    void eachConverterIsMadeOnce();
    void changeOfTheUnitIsTheOneSignal();
    void vocabularyHoldsTheFamiliesInOrder();
    void vocabularyHoldsTheLabelsInOrder();
};

void UnitsConvertersTest::timeConvertsMinutesByTheGivenUnit()
{
    QCOMPARE(CUnitsTime::instance()->toBase(2.0, 1), 120.0);
    QCOMPARE(CUnitsTime::instance()->toBase(2.0, 0), 2.0);
    QCOMPARE(CUnitsTime::instance()->toBase(2.0, 7), 2.0);
}

void UnitsConvertersTest::timeConvertsMinutesByTheUnitInUse()
{
    CMinutes minutes;
    QCOMPARE(minutes.toDisplay(120.0), 2.0);
    QCOMPARE(minutes.toBase(2.0), 120.0);
    QCOMPARE(minutes.toBase(2.0, 0), 2.0);
}

void UnitsConvertersTest::timePassesSecondsUnchanged()
{
    QCOMPARE(CUnitsTime::instance()->toDisplay(0.1), 0.1);
    QCOMPARE(CUnitsTime::instance()->toBase(0.1), 0.1);
}

void UnitsConvertersTest::noneConvertsNothing()
{
    QCOMPARE(CUnitsNone::instance()->toDisplay(120.0), 120.0);
    QCOMPARE(CUnitsNone::instance()->toBase(120.0), 120.0);
    QCOMPARE(CUnitsNone::instance()->toBase(120.0, 1), 120.0);
}

void UnitsConvertersTest::labelsNameTheUnitInUse()
{
    QVERIFY(CUnitsNone::instance()->label().isEmpty());
    QCOMPARE(CUnitsTime::instance()->label(), QStringLiteral("s"));
    QCOMPARE(CMinutes().label(), QStringLiteral("min"));
}

void UnitsConvertersTest::eachConverterIsMadeOnce()
{
    QCOMPARE(CUnitsNone::instance(), CUnitsNone::instance());
    QCOMPARE(CUnitsTime::instance(), CUnitsTime::instance());
}

void UnitsConvertersTest::changeOfTheUnitIsTheOneSignal()
{
    QCOMPARE(ownMethods(CUnitsConverter::staticMetaObject, QMetaMethod::Signal),
             QStringList("updateUnits(QString)"));
    CMinutes minutes;
    QSignalSpy told(&minutes, &CUnitsConverter::updateUnits);
    minutes.select(0);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told[0][0].toString(), QStringLiteral("s"));
}

void UnitsConvertersTest::vocabularyHoldsTheFamiliesInOrder()
{
    const QStringList expected =
        QStringLiteral("Other,None,Acceleration,Angle,Angular Acceleration,"
                       "Angular Velocity,Density,Energy,Work Function,Force,Charge,Length,"
                       "Mass,MOI,Shear Modulus,Time,Torque,Velocity,Volume,Frequency,"
                       "Temperature,Heat Flux,Stiffness,Stress,Mass Flow,"
                       "Stiffness Per Unit Area,Energy Density,Surface Energy,Pressure,"
                       "Wear Constant")
            .split(QLatin1Char(','));
    QCOMPARE(listOf(UnitVocabulary::FAMILIES), expected);
    QCOMPARE(expected.size(), 30);
}

void UnitsConvertersTest::vocabularyHoldsTheLabelsInOrder()
{
    const QStringList expected =
        QStringLiteral("C,J/S,W,nC,°C,°F,K,eV,J,kp/cm²,atm,btu,dyn/cm²,cm³,cm,cm/s²,cm/s,"
                       "deg,deg/s²,deg/s,dyn,Dyne.cm,erg,fpm/s,ft³,ft,ft-lbf,ft/min,ft/s²,"
                       "ft/s,g,gcm²,g/cm³,gf,gf-cm,g/min,g/s,Hz,in³,in,in-lbf,in/s²,in/s,"
                       "J,J/m²,J/m³,kg,kgf,kgf-m,kgm²,kg/m³,kg/h,kg/min,kg/s,ksi,kwh,L,lb,"
                       "lbf,lbf/ft³,lbf-ft,lbf/ft,lbf-in,lbft²,lb/ft³,lbin²,lb/in³,lb/min,"
                       "lb/s,m³,m,mg,mg/min,mg/s,min,mm³,mm,mm/s²,mm/s,m/s²,m/s,"
                       "MetricTonnes/h,N,N/m³,Nm,N/m,N/m²,N/mm²,oz,ozf,oz/min,oz/s,P,Pa,"
                       "pdl,lbs/in²,lbf/in²,rad,rad/s²,rad/s,rpm,slugft²,slug/ft³,UKTon/h,"
                       "USTon/h,Torr,kHz,mHz")
            .split(QLatin1Char(','));
    QCOMPARE(listOf(UnitVocabulary::LABELS), expected);
    QCOMPARE(UnitVocabulary::SECOND, QStringLiteral("s"));
    QCOMPARE(UnitVocabulary::MINUTE, QStringLiteral("min"));
}

TARNEL_TEST_MAIN(UnitsConvertersTest)
#include "units_converters_test.moc"
