#pragma once

#include <QStringList>

#include <set>
#include <string>
#include <vector>

/// The vocabulary of the simulator's command line and of the solver settings in a .dfg file. Each
/// flag carries its leading and its trailing blank.
namespace SimulatorOptions {

/// Stands before every other flag and takes no value.
extern std::string LeadingFlag;
/// Value text of an argument that is left out of the command line.
extern std::string Disabled;
extern std::string On;
extern std::string Off;
/// Value text of the time step that the simulator chooses itself.
extern std::string AutomaticTimeStep;

extern std::string TotalTimeFlag;
extern std::string SaveIntervalFlag;
extern std::string CellSizeFlag;
extern std::string TimeStepFlag;
extern std::string CoresFlag;
extern std::string EngineFlag;
extern std::string DeviceIndexFlag;
extern std::string RewindFlag;
extern std::string RecalculateFlag;
extern std::string StepLimitFlag;
extern std::string DynamicDomainFlag;
extern std::string CheckIntervalFlag;
extern std::string NumberOfChecksFlag;
extern std::string DisplacementFlag;
extern std::string GpuSplitFlag;
extern std::string SimExportFlag;
extern std::string CouplingServerFlag;
extern std::string AutoGridFlag;
extern std::string ConnectionCleanUpFlag;
extern std::string CompressDataFlag;
extern std::string SinglePrecisionFlag;
extern std::string AlternativeDetectionFlag;

/// All flags but the leading one, in the order in which they go on the command line.
extern std::vector<std::string> EmissionOrder;

/// Names in the order of the simulator's engine index.
extern QStringList Engines;
extern QStringList SplitAxes;

extern std::string AutoGridCellKey;
extern std::string AutoTimeStepKey;
extern std::string DynamicDomainKey;
extern std::string EngineIndexKey;
extern std::string FixedTimeStepKey;
extern std::string ThreadsKey;
extern std::string PsiKey;
extern std::string RadiusCoefficientKey;
extern std::string TauKey;
extern std::string SplitDimensionKey;
extern std::string WriteIntervalKey;
extern std::string WriteTotalKey;
extern std::string CompressDataKey;
extern std::string SinglePrecisionKey;
extern std::string LegacyModeKey;

/// Sections of a .dfg file that hold no solver settings.
extern std::set<std::string> IgnoredSections;

void initialise();

} // namespace SimulatorOptions
