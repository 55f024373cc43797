#pragma once

#include <QString>

/// Words of the results page: what its progress dialog says and the markers of the simulator's CSV.
namespace ProgressStrings {

extern QString GatheringData;
extern QString CloseProgressBar;
extern QString WritingData;
extern QString ClosingFile;
extern QString TimeRow;
extern QString TimeHeading;
extern QString ExtractedData;
extern QString OperationComplete;

void initialise();

} // namespace ProgressStrings
