#include "app/constants/file_names.h"
#include "bench/measured.h"
#include "bench/operations.h"
#include "bench/workload.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/batch_file.h"
#include "jobs/case_preparation.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_loading.h"
#include "jobs/job_matrix.h"
#include "jobs/job_specification.h"
#include "parameters/parameter_entry.h"
#include "results/result_files.h"
#include "results/result_table.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

void load(const std::string& job)
{
    CJobMatrix matrix;
    CJobFileReader reader;
    if (!loadJobFolder(job, matrix, reader, [](const std::string&, int) {})) {
        throw std::runtime_error("the job can't be loaded");
    }
}

/// The values that a field takes in the job.
QJsonArray columnOf(const CParameterFields& field)
{
    QJsonArray values;
    const bool isVaried = field.m_values.size() > 1;
    for (std::size_t index = isVaried ? 1 : 0; index < field.m_values.size(); ++index) {
        const CaseValue& value = field.m_values[index];
        const bool* const flag = std::get_if<bool>(&value);
        values.append(flag != nullptr ? QJsonValue(*flag ? "true" : "false")
                                      : QJsonValue(std::get<double>(value)));
    }
    return values;
}

/// What the script needs to know to write the same matrix: a list of values for each column.
void writeColumns(const CJobMatrix& matrix, const std::string& path)
{
    QJsonArray columns;
    for (const auto& entry : CDeckStore::instance()->parameters()) {
        for (const auto& key : entry->m_keys) {
            for (const auto& field : key->m_fields) {
                columns.append(columnOf(*field));
            }
        }
    }
    std::ostringstream heading;
    matrix.writeHeader(heading);
    const QJsonObject job{
        {"heading", QString::fromStdString(heading.str()).trimmed()},
        {"options", QString::fromStdString(CDeckStore::instance()->simulatorOptions())},
        {"columns", columns}};
    std::ofstream(path) << QJsonDocument(job).toJson().toStdString();
}

} // namespace

/// `folder` gets the deck, its additional files and the job "JobSpec", and "columns.json" for the
/// script.
void Operations::makeJob(const QStringList& arguments)
{
    const std::string folder = arguments[0].toStdString();
    Workload::writeJobDeck(folder, arguments[2].toUInt());
    Workload::openJobDeck(folder, arguments[1].toInt());
    QStringList files;
    for (const char* name : {"geometry.stl", "materials.txt", "settings.txt"}) {
        files.push_back(arguments[0] + "/" + name);
    }
    CAppSettings::instance()->setValue(CAppSettings::AdditionalFilesPath, files.join(';'));
    CJobMatrix matrix;
    if (!generateJobFolder(matrix, folder)) {
        throw std::runtime_error("the job can't be made");
    }
    writeColumns(matrix, folder + "/columns.json");
}

void Operations::writeMatrixText(const QStringList& arguments)
{
    Workload::openJobDeck(arguments[0].toStdString(), arguments[1].toInt());
    CJobMatrix matrix;
    measured([&] {
        std::ofstream stream(arguments[2].toStdString());
        matrix.writeHeader(stream);
        matrix.buildCases();
        matrix.writeCases(stream);
    });
}

void Operations::writeMatrix(const QStringList& arguments)
{
    Workload::openJobDeck(arguments[0].toStdString(), arguments[1].toInt());
    CJobMatrix matrix;
    measured([&] { matrix.writeJobMatrix(arguments[2].toStdString()); });
}

void Operations::loadJob(const QStringList& arguments)
{
    const double before = residentKiB();
    measured([&] { load(arguments[0].toStdString()); });
    sayFigure("held_kib", residentKiB() - before);
}

void Operations::prepareFolders(const QStringList& arguments)
{
    load(arguments[0].toStdString());
    std::string caseRoot;
    measured([&] { prepareCases(arguments[1].toStdString(), true, caseRoot); });
}

/// As a user prepares cases that are to run elsewhere.
void Operations::prepareDistributed(const QStringList& arguments)
{
    load(arguments[0].toStdString());
    std::string caseRoot;
    measured([&] {
        const auto commands = prepareCases(arguments[1].toStdString(), false, caseRoot);
        CBatchFiles(caseRoot).write(commands);
    });
}

void Operations::collate(const QStringList& arguments)
{
    measured([&] {
        const auto files = ResultFiles::csvFiles(arguments[0].toStdString());
        ResultTable table;
        if (ResultFiles::hasScript(arguments[0].toStdString())) {
            throw std::runtime_error("these aren't files of the simulator");
        }
        gatherSimulatorResults(
            files, [](int) {}, table);
        std::ofstream stream(arguments[1].toStdString());
        writeResults(table, stream);
    });
}
