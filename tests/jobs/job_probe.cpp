// Generates a job with two additional files of one name and lets the error pass: no handler stands
// above it, so the process ends with the stack as it is. Its argument is the save location.

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/job_matrix.h"
#include "jobs/job_specification.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    CTestEnvironment environment;
    const CJobFixture fixture;
    fixture.folder("x");
    fixture.folder("y");
    CDeckStore::instance()->creatorData() = {CCreatorData("bed")};
    CDeckStore::instance()->setSimulatorOptions(" -c ");
    CAppSettings* settings = CAppSettings::instance();
    settings->setValue(CAppSettings::ZEKPath,
                       QString::fromStdString(fixture.writeFile("bed.zek", "deck")));
    settings->setValue(CAppSettings::AdditionalFilesPath,
                       QString::fromStdString(fixture.writeFile("x/a.txt", "first") + ";" +
                                              fixture.writeFile("y/a.txt", "second")));
    CJobMatrix matrix;
    generateJobFolder(matrix, argv[1]);
    return 0;
}
