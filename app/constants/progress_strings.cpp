#include "app/constants/progress_strings.h"

#include <QCoreApplication>

namespace ProgressStrings {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Results", text);
}

} // namespace

QString GatheringData;
QString CloseProgressBar;
QString WritingData;
QString ClosingFile;
QString TimeRow;
QString TimeHeading;
QString ExtractedData;
QString OperationComplete;

void initialise()
{
    GatheringData = translated("Gathering Data");
    CloseProgressBar = translated("Close Progress Bar");
    WritingData = translated("Writing Data");
    ClosingFile = translated("Closing File");
    TimeRow = translated("TIME:");
    TimeHeading = translated("TIME");
    ExtractedData = translated("EXTRACTED DATA");
    OperationComplete = translated("Operation Complete");
}

} // namespace ProgressStrings
