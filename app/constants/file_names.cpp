#include "app/constants/file_names.h"

#include <QCoreApplication>

namespace FileNames {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Filesystem", text);
}

std::string translatedName(const char* text)
{
    return translated(text).toStdString();
}

} // namespace

std::string DeckExtension;
std::string CompanionExtension;
std::string DfgExtension;
std::string QsvExtension;
std::string PythonExtension;
std::string ExecutableExtension;
std::string CsvExtension;
std::string TextExtension;
std::string BatchExtension;
std::string DataFolderSuffix;
std::string DataFileName;
std::string DataFileSuffix;
std::string CasePrefix;
std::string JobFolderStem;
std::string CaseRootStem;
std::string JobMatrixStem;
std::string AdditionalFilesStem;
std::string CouplingFileStem;
std::string PythonDetailsStem;
std::string CaseNumberHeading;
std::string BatchFileStem;
std::string ToDeleteSuffix;
std::string CommandInterpreter;
std::string RunAndExit;
std::string Python;
std::string CondaActivate;
std::string CondaDeactivate;
std::string PythonOnPath;
std::string CondaExecutableOnPath;
std::string CondaBatchOnPath;
std::string NoDeckFlag;
std::string CommandSeparator;
std::string ChangeDirectory;
std::string ParentDirectory;
std::string AwaitingClient;
std::string RunningAnalysis;
std::string CombinedResultsStem;
std::string InputArgument;
std::string ExportArgument;
std::string FieldSeparator;

QString BrowseForFolder;
QString ChooseDeck;
QString ChooseExecutable;
QString ChooseDfg;
QString ChooseQsv;
QString ChoosePython;
QString ChooseAdditionalFiles;
QString DeckFilter;
QString ExecutableFilter;
QString DfgFilter;
QString QsvFilter;
QString PythonFilter;

void initialise()
{
    DeckExtension = translatedName(".zek");
    CompanionExtension = translatedName(".ynd");
    DfgExtension = translatedName(".dfg");
    QsvExtension = translatedName(".qsv");
    PythonExtension = translatedName(".py");
    ExecutableExtension = translatedName(".exe");
    CsvExtension = translatedName(".csv");
    TextExtension = translatedName(".txt");
    BatchExtension = translatedName(".bat");
    DataFolderSuffix = translatedName("_data");
    DataFileName = translatedName("0.h5");
    DataFileSuffix = translatedName("_data/0.h5");
    CasePrefix = translatedName("Job");
    JobFolderStem = translatedName("JobSpec");
    CaseRootStem = translatedName("JobFileLocation");
    JobMatrixStem = translatedName("input_jobID-Matrix");
    AdditionalFilesStem = translatedName("Additional File Directory");
    CouplingFileStem = translatedName("Coupling File Directory");
    PythonDetailsStem = translatedName("PyDetails");
    CaseNumberHeading = translatedName("ID#");
    BatchFileStem = translatedName("RunAllSimulations");
    ToDeleteSuffix = translatedName("_to_delete");
    CommandInterpreter = translatedName("cmd.exe");
    RunAndExit = translatedName("/C");
    Python = translatedName("python");
    CondaActivate = translatedName("conda activate");
    CondaDeactivate = translatedName("conda deactivate");
    PythonOnPath = translatedName("\\python.exe");
    CondaExecutableOnPath = translatedName("\\conda.exe");
    CondaBatchOnPath = translatedName("\\conda.bat");
    NoDeckFlag = translatedName("PYTHON_NO_DECK_FLAG");
    CommandSeparator = translatedName("& ^");
    ChangeDirectory = translatedName("cd");
    ParentDirectory = translatedName("..");
    AwaitingClient = translatedName("Awaiting Client connection...\r\n");
    RunningAnalysis = translatedName("Running Python analysis\n");
    CombinedResultsStem = translatedName("/CollatedResults");
    InputArgument = translatedName("-i");
    ExportArgument = translatedName("-e");
    FieldSeparator = translatedName(",");

    BrowseForFolder = translated("Browse for folder");
    ChooseDeck = translated("Choose .zek File");
    ChooseExecutable = translated("Choose .exe File");
    ChooseDfg = translated("Choose .dfg File");
    ChooseQsv = translated("Choose .qsv File");
    ChoosePython = translated("Choose .py File");
    ChooseAdditionalFiles = translated("Choose Additional Files");
    DeckFilter = translated("Zek file (*.zek)");
    ExecutableFilter = translated("Executable file (*.exe)");
    DfgFilter = translated("Dfg file (*.dfg)");
    QsvFilter = translated("Qsv file (*.qsv)");
    PythonFilter = translated("Python file (*.py)");
}

} // namespace FileNames
