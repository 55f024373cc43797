#include "app/startup.h"
#include "bench/workload.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "deck/deck_store.h"
#include "jobs/case_matrix.h"
#include "jobs/case_record.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_matrix.h"
#include "results/simulator_csv.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <fstream>
#include <sstream>

namespace {

constexpr int cases = 1000;

const QTemporaryDir& folder()
{
    static const QTemporaryDir scratch;
    return scratch;
}

std::string inFolder(const char* name)
{
    return folder().filePath(QLatin1String(name)).toStdString();
}

void expandMatrix(benchmark::State& state)
{
    CJobMatrix matrix;
    for (auto round : state) {
        matrix.buildCases();
        benchmark::DoNotOptimize(matrix.cases().data());
    }
    state.SetItemsProcessed(state.iterations() * cases);
}
BENCHMARK(expandMatrix);

void writeMatrixLines(benchmark::State& state)
{
    CJobMatrix matrix;
    matrix.buildCases();
    for (auto round : state) {
        std::ofstream stream("/dev/null");
        matrix.writeCases(stream);
    }
    state.SetItemsProcessed(state.iterations() * cases);
}
BENCHMARK(writeMatrixLines);

void readMatrixFile(benchmark::State& state)
{
    CJobMatrix matrix;
    matrix.buildCases();
    {
        std::ofstream stream(inFolder("matrix.csv"));
        matrix.writeHeader(stream);
        matrix.writeCases(stream);
    }
    const CJobFileReader reader;
    for (auto round : state) {
        benchmark::DoNotOptimize(reader.readJobMatrix(inFolder("matrix.csv")));
    }
    state.SetItemsProcessed(state.iterations() * cases);
}
BENCHMARK(readMatrixFile);

void makeCaseRecord(benchmark::State& state)
{
    CJobMatrix matrix;
    matrix.buildCases();
    const CCreatorData& deck = CDeckStore::instance()->creatorData().front();
    for (auto round : state) {
        benchmark::DoNotOptimize(caseRecord(deck, 1, 0, matrix.cases().front()));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(makeCaseRecord);

void readDeck(benchmark::State& state)
{
    const auto rows = state.range(0);
    Workload::writeTableDeck(inFolder("tables"), int(rows));
    const QString deck = folder().filePath(QStringLiteral("tables/deck.zek"));
    CDeckSerializer serializer;
    for (auto round : state) {
        benchmark::DoNotOptimize(DeckLoading::loadDeck(serializer, deck));
    }
    state.SetItemsProcessed(state.iterations() * rows);
}
BENCHMARK(readDeck)->Arg(10)->Arg(1000);

void takeSimulatorCsvApart(benchmark::State& state)
{
    std::string text = "EXTRACTED DATA\nTIME:,0\nTIME,a,b,c,d,e,f,g,h,i,j\n";
    for (int line = 0; line < 1000; ++line) {
        text += "0.125,1.5,2.5,3.5,4.5,5.5,6.5,7.5,8.5,9.5,10.5\n";
    }
    for (auto round : state) {
        benchmark::DoNotOptimize(readSimulatorCsv(text));
    }
    state.SetBytesProcessed(state.iterations() * std::int64_t(text.size()));
}
BENCHMARK(takeSimulatorCsvApart);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    startup::keepNumbersNeutral();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder().path());
    startup::fillConstants();
    std::filesystem::create_directory(inFolder("job"));
    std::filesystem::create_directory(inFolder("tables"));
    Workload::writeJobDeck(inFolder("job"), 0);
    Workload::openJobDeck(inFolder("job"), cases);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
