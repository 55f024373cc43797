#pragma once

#include <QString>

#include <string>

/// Extensions, fixed file names, command words and the texts of the file dialogs.
namespace FileNames {

extern std::string DeckExtension;
extern std::string CompanionExtension;
extern std::string DfgExtension;
extern std::string QsvExtension;
extern std::string PythonExtension;
extern std::string ExecutableExtension;
extern std::string CsvExtension;
extern std::string TextExtension;
extern std::string BatchExtension;
extern std::string DataFolderSuffix;
extern std::string DataFileName;
extern std::string DataFileSuffix;
extern std::string CasePrefix;
extern std::string JobFolderStem;
extern std::string CaseRootStem;
extern std::string JobMatrixStem;
extern std::string AdditionalFilesStem;
extern std::string CouplingFileStem;
extern std::string PythonDetailsStem;
extern std::string CaseNumberHeading;
extern std::string BatchFileStem;
extern std::string ToDeleteSuffix;
extern std::string CommandInterpreter;
extern std::string RunAndExit;
extern std::string Python;
extern std::string CondaActivate;
extern std::string CondaDeactivate;
extern std::string PythonOnPath;
extern std::string CondaExecutableOnPath;
extern std::string CondaBatchOnPath;
extern std::string NoDeckFlag;
extern std::string CommandSeparator;
extern std::string ChangeDirectory;
extern std::string ParentDirectory;
extern std::string AwaitingClient;
extern std::string RunningAnalysis;
extern std::string CombinedResultsStem;
extern std::string InputArgument;
extern std::string ExportArgument;
extern std::string FieldSeparator;

extern QString BrowseForFolder;
extern QString ChooseDeck;
extern QString ChooseExecutable;
extern QString ChooseDfg;
extern QString ChooseQsv;
extern QString ChoosePython;
extern QString ChooseAdditionalFiles;
extern QString DeckFilter;
extern QString ExecutableFilter;
extern QString DfgFilter;
extern QString QsvFilter;
extern QString PythonFilter;

void initialise();

} // namespace FileNames
