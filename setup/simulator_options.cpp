#include "setup/simulator_options.h"

#include <QCoreApplication>

namespace SimulatorOptions {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("SimulatorOptions", text);
}

std::string translatedText(const char* text)
{
    return translated(text).toStdString();
}

} // namespace

std::string LeadingFlag;
std::string Disabled;
std::string On;
std::string Off;
std::string AutomaticTimeStep;
std::string TotalTimeFlag;
std::string SaveIntervalFlag;
std::string CellSizeFlag;
std::string TimeStepFlag;
std::string CoresFlag;
std::string EngineFlag;
std::string DeviceIndexFlag;
std::string RewindFlag;
std::string RecalculateFlag;
std::string StepLimitFlag;
std::string DynamicDomainFlag;
std::string CheckIntervalFlag;
std::string NumberOfChecksFlag;
std::string DisplacementFlag;
std::string GpuSplitFlag;
std::string SimExportFlag;
std::string CouplingServerFlag;
std::string AutoGridFlag;
std::string ConnectionCleanUpFlag;
std::string CompressDataFlag;
std::string SinglePrecisionFlag;
std::string AlternativeDetectionFlag;

std::vector<std::string> EmissionOrder;
QStringList Engines;
QStringList SplitAxes;

std::string AutoGridCellKey;
std::string AutoTimeStepKey;
std::string DynamicDomainKey;
std::string EngineIndexKey;
std::string FixedTimeStepKey;
std::string ThreadsKey;
std::string PsiKey;
std::string RadiusCoefficientKey;
std::string TauKey;
std::string SplitDimensionKey;
std::string WriteIntervalKey;
std::string WriteTotalKey;
std::string CompressDataKey;
std::string SinglePrecisionKey;
std::string LegacyModeKey;

std::set<std::string> IgnoredSections;

namespace {

void fillValueTexts()
{
    LeadingFlag = translatedText(" -c ");
    Disabled = translatedText("Disabled");
    On = translatedText("1");
    Off = translatedText("0");
    AutomaticTimeStep = translatedText("0");
}

void fillFlags()
{
    TotalTimeFlag = translatedText(" -r ");
    SaveIntervalFlag = translatedText(" -w ");
    CellSizeFlag = translatedText(" -g ");
    TimeStepFlag = translatedText(" -t ");
    CoresFlag = translatedText(" -p ");
    EngineFlag = translatedText(" -E ");
    DeviceIndexFlag = translatedText(" -D ");
    RewindFlag = translatedText(" -R ");
    RecalculateFlag = translatedText(" --particle-properties ");
    StepLimitFlag = translatedText(" -n ");
    DynamicDomainFlag = translatedText(" --dyn ");
    CheckIntervalFlag = translatedText(" --dyn-interval ");
    NumberOfChecksFlag = translatedText(" --dyn-check ");
    DisplacementFlag = translatedText(" --dyn-disp ");
    GpuSplitFlag = translatedText(" --gpu-split ");
    SimExportFlag = translatedText(" --simExport ");
    CouplingServerFlag = translatedText(" --cs ");
    AutoGridFlag = translatedText(" --auto-grid ");
    ConnectionCleanUpFlag = translatedText(" --wait ");
    CompressDataFlag = translatedText(" --compress-data ");
    SinglePrecisionFlag = translatedText(" --sp ");
    AlternativeDetectionFlag = translatedText(" --acd ");
}

void fillEmissionOrder()
{
    EmissionOrder = {TotalTimeFlag,
                     SaveIntervalFlag,
                     CellSizeFlag,
                     TimeStepFlag,
                     CoresFlag,
                     EngineFlag,
                     DeviceIndexFlag,
                     RewindFlag,
                     RecalculateFlag,
                     StepLimitFlag,
                     DynamicDomainFlag,
                     CheckIntervalFlag,
                     NumberOfChecksFlag,
                     DisplacementFlag,
                     GpuSplitFlag,
                     SimExportFlag,
                     CouplingServerFlag,
                     AutoGridFlag,
                     ConnectionCleanUpFlag,
                     CompressDataFlag,
                     SinglePrecisionFlag,
                     AlternativeDetectionFlag};
}

void fillKeys()
{
    AutoGridCellKey = translatedText("PROCESSOR:GENERAL:AUTO GRIDCELL");
    AutoTimeStepKey = translatedText("PROCESSOR:GENERAL:AUTO TIMESTEP");
    DynamicDomainKey = translatedText("PROCESSOR:GENERAL:DYNAMIC DOMAIN");
    EngineIndexKey = translatedText("PROCESSOR:GENERAL:ENGINE_INDEX");
    FixedTimeStepKey = translatedText("PROCESSOR:GENERAL:FIXED TIMESTEP");
    ThreadsKey = translatedText("PROCESSOR:GENERAL:NUM THREADS");
    PsiKey = translatedText("PROCESSOR:GENERAL:PSI");
    RadiusCoefficientKey = translatedText("PROCESSOR:GENERAL:RADIUS_COEFFICIENT");
    TauKey = translatedText("PROCESSOR:GENERAL:TAU");
    SplitDimensionKey = translatedText("PROCESSOR:GPU PARAMETERS:GPU DOMAIN SPLIT DIMENSION");
    WriteIntervalKey = translatedText("PROCESSOR:WRITE:INTERVAL");
    WriteTotalKey = translatedText("PROCESSOR:WRITE:TOTAL");
    CompressDataKey = translatedText("PROCESSOR:WRITE:COMPRESS DATA");
    SinglePrecisionKey =
        translatedText("PROCESSOR:GPU PARAMETERS:GPU_CONTACT DETECTION SINGLE PRECISION");
    LegacyModeKey = translatedText("PROCESSOR:GPU PARAMETERS:GPU CONTACT DETECTION LEGACY MODE");
}

} // namespace

void initialise()
{
    fillValueTexts();
    fillFlags();
    fillEmissionOrder();
    fillKeys();
    Engines = QStringList{translated("CPU Solver"), translated("GPU OCL Solver"),
                          translated("GPU CUDA Solver")};
    SplitAxes = QStringList{translated("X"), translated("Y"), translated("Z")};
    IgnoredSections = {translatedText("CREATOR"), translatedText("ANALYST"),
                       translatedText("VIEWS")};
}

} // namespace SimulatorOptions
