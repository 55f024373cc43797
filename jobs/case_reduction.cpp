#include "jobs/case_reduction.h"

#include "app/constants/file_names.h"
#include "jobs/case_task.h"
#include "platform/file_operations.h"

void reduceToFirstFile(const CaseTask& task)
{
    const std::string number = std::to_string(task.m_iCaseNumber);
    const std::string folder = task.m_sCaseRoot + "/" + FileNames::CasePrefix + number + "/" +
                               task.m_sDeck + number + FileNames::DataFolderSuffix;
    const std::string discarded = folder + FileNames::ToDeleteSuffix;
    platform::renamePath(folder, discarded);
    platform::createDirectory(folder);
    platform::copyNewFile(discarded + "/" + FileNames::DataFileName,
                          folder + "/" + FileNames::DataFileName);
    platform::removeTree(discarded);
}
