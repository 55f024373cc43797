#include "setup/simulator_arguments.h"

#include "setup/simulator_options.h"
#include "tests/setup/simulator_flags.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

class CSimulatorArgumentsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFlagStandsInItsPlace();
    void listsStandInIndexOrder();
    void keysOfTheSolverSettings();
    void noArgumentLeavesTheLeadingFlag();
    void orderIsThatOfTheTableWhateverCameFirst();
    void anEntryThatIsThereKeepsItsValue();
    void aFlagThatNeverEnteredIsNotAdded();
    void anUnknownFlagIsIgnored();
    void onlyTheExactSentinelLeavesAnArgumentOut();
    void aFlagAloneKeepsBothBlanks();
    void numbersHaveSixDigits_data();
    void numbersHaveSixDigits();
    void valuesOfSwitches();
};

void CSimulatorArgumentsTest::initTestCase()
{
    SimulatorOptions::initialise();
}

void CSimulatorArgumentsTest::everyFlagStandsInItsPlace()
{
    QCOMPARE(SimulatorOptions::EmissionOrder, FLAGS_IN_ORDER);
    QCOMPARE(SimulatorOptions::LeadingFlag, std::string(" -c "));
    QCOMPARE(SimulatorOptions::Disabled, std::string("Disabled"));
}

void CSimulatorArgumentsTest::listsStandInIndexOrder()
{
    QCOMPARE(SimulatorOptions::Engines,
             QStringList({"CPU Solver", "GPU OCL Solver", "GPU CUDA Solver"}));
    QCOMPARE(SimulatorOptions::SplitAxes, QStringList({"X", "Y", "Z"}));
    QCOMPARE(SimulatorOptions::IgnoredSections,
             (std::set<std::string>{"CREATOR", "ANALYST", "VIEWS"}));
}

void CSimulatorArgumentsTest::keysOfTheSolverSettings()
{
    const std::vector<std::string> keys{
        SimulatorOptions::AutoGridCellKey,  SimulatorOptions::AutoTimeStepKey,
        SimulatorOptions::DynamicDomainKey, SimulatorOptions::EngineIndexKey,
        SimulatorOptions::FixedTimeStepKey, SimulatorOptions::ThreadsKey,
        SimulatorOptions::PsiKey,           SimulatorOptions::RadiusCoefficientKey,
        SimulatorOptions::TauKey,           SimulatorOptions::SplitDimensionKey,
        SimulatorOptions::WriteIntervalKey, SimulatorOptions::WriteTotalKey,
        SimulatorOptions::CompressDataKey,  SimulatorOptions::SinglePrecisionKey,
        SimulatorOptions::LegacyModeKey};
    const std::vector<std::string> expected{
        "PROCESSOR:GENERAL:AUTO GRIDCELL",
        "PROCESSOR:GENERAL:AUTO TIMESTEP",
        "PROCESSOR:GENERAL:DYNAMIC DOMAIN",
        "PROCESSOR:GENERAL:ENGINE_INDEX",
        "PROCESSOR:GENERAL:FIXED TIMESTEP",
        "PROCESSOR:GENERAL:NUM THREADS",
        "PROCESSOR:GENERAL:PSI",
        "PROCESSOR:GENERAL:RADIUS_COEFFICIENT",
        "PROCESSOR:GENERAL:TAU",
        "PROCESSOR:GPU PARAMETERS:GPU DOMAIN SPLIT DIMENSION",
        "PROCESSOR:WRITE:INTERVAL",
        "PROCESSOR:WRITE:TOTAL",
        "PROCESSOR:WRITE:COMPRESS DATA",
        "PROCESSOR:GPU PARAMETERS:GPU_CONTACT DETECTION SINGLE PRECISION",
        "PROCESSOR:GPU PARAMETERS:GPU CONTACT DETECTION LEGACY MODE"};
    QCOMPARE(keys, expected);
}

void CSimulatorArgumentsTest::noArgumentLeavesTheLeadingFlag()
{
    QCOMPARE(CSimulatorArguments().optionString(), std::string(" -c "));
}

void CSimulatorArgumentsTest::orderIsThatOfTheTableWhateverCameFirst()
{
    CSimulatorArguments arguments;
    arguments.enter(" --acd ", "0");
    arguments.enter(" -w ", "0.500000");
    arguments.enter(" -r ", "1.000000");
    QCOMPARE(arguments.optionString(), std::string(" -c  -r 1.000000 -w 0.500000 --acd 0"));
}

void CSimulatorArgumentsTest::anEntryThatIsThereKeepsItsValue()
{
    CSimulatorArguments arguments;
    arguments.enter(" -p ", "2");
    arguments.enter(" -p ", "4");
    QCOMPARE(arguments.optionString(), std::string(" -c  -p 2"));
    arguments.set(" -p ", "4");
    QCOMPARE(arguments.optionString(), std::string(" -c  -p 4"));
}

void CSimulatorArgumentsTest::aFlagThatNeverEnteredIsNotAdded()
{
    CSimulatorArguments arguments;
    arguments.set(" --sp ", "1");
    QCOMPARE(arguments.optionString(), std::string(" -c "));
}

void CSimulatorArgumentsTest::anUnknownFlagIsIgnored()
{
    CSimulatorArguments arguments;
    arguments.enter("-r", "1");
    arguments.set(" --other ", "1");
    QCOMPARE(arguments.optionString(), std::string(" -c "));
}

void CSimulatorArgumentsTest::onlyTheExactSentinelLeavesAnArgumentOut()
{
    CSimulatorArguments arguments;
    arguments.enter(" -D ", "Disabled");
    QCOMPARE(arguments.optionString(), std::string(" -c "));
    arguments.set(" -D ", "disabled");
    QCOMPARE(arguments.optionString(), std::string(" -c  -D disabled"));
    arguments.set(" -D ", "Disabled ");
    QCOMPARE(arguments.optionString(), std::string(" -c  -D Disabled "));
}

void CSimulatorArgumentsTest::aFlagAloneKeepsBothBlanks()
{
    CSimulatorArguments arguments;
    arguments.enter(" -R ", "");
    arguments.enter(" --particle-properties ", "");
    QCOMPARE(arguments.optionString(), std::string(" -c  -R  --particle-properties "));
}

void CSimulatorArgumentsTest::numbersHaveSixDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("zero") << 0.0 << "0.000000";
    QTest::newRow("too small to show") << 0.00000012 << "0.000000";
    QTest::newRow("rounded") << 0.0000015 << "0.000002";
    QTest::newRow("large") << 1e12 << "1000000000000.000000";
    QTest::newRow("negative") << -2.5 << "-2.500000";
}

void CSimulatorArgumentsTest::numbersHaveSixDigits()
{
    QFETCH(double, value);
    QFETCH(QString, text);

    QCOMPARE(QString::fromStdString(SimulatorValue::number(value)), text);
}

void CSimulatorArgumentsTest::valuesOfSwitches()
{
    QCOMPARE(SimulatorValue::oneOrZero(true), std::string("1"));
    QCOMPARE(SimulatorValue::oneOrZero(false), std::string("0"));
    QCOMPARE(SimulatorValue::flagAlone(true), std::string());
    QCOMPARE(SimulatorValue::flagAlone(false), std::string("Disabled"));
    QCOMPARE(SimulatorValue::valueIf(true, "X"), std::string("X"));
    QCOMPARE(SimulatorValue::valueIf(false, "X"), std::string("Disabled"));
}

TARNEL_TEST_MAIN(CSimulatorArgumentsTest)

#include "simulator_arguments_test.moc"
