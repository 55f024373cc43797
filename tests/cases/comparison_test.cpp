#include "cases/comparison.h"

#include "cases/comparison_plot.h"
#include "tests/results/result_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QImage>
#include <QXmlStreamReader>
#include <QtTest>

#include <cmath>
#include <sstream>

using namespace cases;

namespace {

const QByteArray Matrix = "Job ID#,A Restitution,A Static Friction,Flag,Simulator Options\n"
                          "0,0.5,0.1,true, -c  -r 1\n"
                          "1,0.5,0.2,true, -c  -r 1\n"
                          "2,0.5,0.4,false, -c  -r 1\n";

const QByteArray SimulatorResults = "0,Name,heap0,\n0,Settled (s),0.5,\n0,TIME:,0,\n"
                                    "0,TIME,0,1,\n0,Angle,1,20,\n0,Height,3,0.5,\n\n"
                                    "1,Settled (s),0.7,\n1,TIME,0,1,\n1,Angle,1,25,\n"
                                    "1,Height,3,1,\n\n"
                                    "2,Settled (s),0.9,\n2,TIME,0,1,\n2,Angle,1,30,\n"
                                    "2,Height,3,2,\n\n";

const QByteArray ScriptResults = "-1,ID#,\n\n0,angle,mass,\n0,20,1.5,\n\n1,angle,mass,\n"
                                 "1,25,bad,\n\n2,angle,mass,\n2,30,2.5,\n\n";

struct Folders
{
    Folders(const QByteArray& matrix, const QByteArray& results)
    {
        putFile(folder.path(), "job/input_jobID-Matrix.csv", matrix);
        putFile(folder.path(), "root/CollatedResults.csv", results);
    }

    std::filesystem::path job() const { return folder.filePath("job").toStdString(); }
    std::filesystem::path root() const { return folder.filePath("root").toStdString(); }

    SComparison compared(const std::vector<SMeasurement>& measurements) const
    {
        return compare(readVariedParameters(job()), readCombinedResults(root()), measurements);
    }

    QTemporaryDir folder;
};

template <class Call>
QString errorOf(Call call)
{
    try {
        call();
    } catch (const CComparisonError& error) {
        return error.what();
    }
    return QString();
}

} // namespace

class ComparisonTest : public QObject
{
    Q_OBJECT

private slots:
    void measurementHasNameValueAndWeight();
    void badMeasurementsAreRefused_data();
    void badMeasurementsAreRefused();
    void onlyVariedParametersAreKept();
    void oneCaseVariesNothing();
    void optionsWithACommaAddNoParameter();
    void missingFilesAreNamed();
    void shortMatrixLineIsNamed();
    void lastValueOfATableIsTheResult();
    void lastLineOfAScriptIsTheResult();
    void rankedByWeightedRelativeDistance();
    void equalDistancesStandInTheOrderOfCases();
    void unknownResultNamesTheKnownOnes();
    void caseWithoutResultsIsToldApart();
    void nothingToRankIsAnError();
    void fileHoldsAllColumns();
    void numbersReadTheSameWhateverTheLocale();
    void picturesShowResponseMeasurementAndBestCase();
    void picturesOfLikeNamesKeepApart();
};

void ComparisonTest::measurementHasNameValueAndWeight()
{
    const SMeasurement plain = measurementFromText("Angle of repose (deg)=28.5");
    QCOMPARE(plain.name, std::string("Angle of repose (deg)"));
    QCOMPARE(plain.value, 28.5);
    QCOMPARE(plain.weight, 1.0);
    const SMeasurement weighted = measurementFromText("a=b=-2e-3:4");
    QCOMPARE(weighted.name, std::string("a=b"));
    QCOMPARE(weighted.value, -2e-3);
    QCOMPARE(weighted.weight, 4.0);
}

void ComparisonTest::badMeasurementsAreRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "a", "=1", "a=", "a=x", "a=1:", "a=1:0", "a=1:-1", "a=1:x", "a=0",
                             "a=nan", "a=1 2"}) {
        QTest::newRow(text) << text;
    }
}

void ComparisonTest::badMeasurementsAreRefused()
{
    QFETCH(QString, text);
    QVERIFY_EXCEPTION_THROWN(measurementFromText(text.toStdString()), CComparisonError);
}

void ComparisonTest::onlyVariedParametersAreKept()
{
    const Folders folders(Matrix, SimulatorResults);
    const SVariedParameters parameters = readVariedParameters(folders.job());
    QCOMPARE(parameters.names, (std::vector<std::string>{"A Static Friction", "Flag"}));
    QCOMPARE(parameters.texts.size(), std::size_t(3));
    QCOMPARE(parameters.texts.at(2), (std::vector<std::string>{"0.4", "false"}));
}

void ComparisonTest::oneCaseVariesNothing()
{
    const Folders folders("Job ID#,A,Simulator Options\n0,1, -c \n", SimulatorResults);
    QVERIFY(readVariedParameters(folders.job()).names.empty());
}

void ComparisonTest::optionsWithACommaAddNoParameter()
{
    const Folders folders("Job ID#,A,Simulator Options\n0,1, -D 1,2\n1,1, -D 1,3\n", "");
    QVERIFY(readVariedParameters(folders.job()).names.empty());
}

void ComparisonTest::missingFilesAreNamed()
{
    QTemporaryDir empty;
    const std::filesystem::path folder = empty.path().toStdString();
    QVERIFY(errorOf([&] { readVariedParameters(folder); }).endsWith("input_jobID-Matrix.csv"));
    QVERIFY(errorOf([&] { readCombinedResults(folder); }).endsWith("CollatedResults.csv"));
}

void ComparisonTest::shortMatrixLineIsNamed()
{
    const Folders folders("Job ID#,A,B,Simulator Options\n7,1\n", "");
    QVERIFY(errorOf([&] { readVariedParameters(folders.job()); }).contains("\"7\""));
}

void ComparisonTest::lastValueOfATableIsTheResult()
{
    const Folders folders(Matrix, SimulatorResults);
    const CaseResults results = readCombinedResults(folders.root());
    const std::map<std::string, double> expected{
        {"Angle", 20}, {"Height", 0.5}, {"Settled (s)", 0.5}};
    QCOMPARE(results.at(0), expected);
    QCOMPARE(results.at(2).at("Angle"), 30.0);
}

void ComparisonTest::lastLineOfAScriptIsTheResult()
{
    const Folders folders(Matrix, ScriptResults);
    const CaseResults results = readCombinedResults(folders.root());
    QCOMPARE(results.size(), std::size_t(3));
    QCOMPARE(results.at(0), (std::map<std::string, double>{{"angle", 20}, {"mass", 1.5}}));
    QCOMPARE(results.at(1), (std::map<std::string, double>{{"angle", 25}}));
}

void ComparisonTest::rankedByWeightedRelativeDistance()
{
    const Folders folders(Matrix, SimulatorResults);
    const SComparison comparison = folders.compared({{"Angle", 20, 1}, {"Height", 1, 3}});
    QCOMPARE(comparison.ranked.size(), std::size_t(3));
    // Case 0: (0 + 3 * 0.5) / 4, case 1: (0.25 + 0) / 4, case 2: (0.5 + 3 * 1) / 4.
    QCOMPARE(comparison.ranked[0].number, std::size_t(1));
    QCOMPARE(comparison.ranked[0].distance, 0.0625);
    QCOMPARE(comparison.ranked[1].number, std::size_t(0));
    QCOMPARE(comparison.ranked[1].distance, 0.375);
    QCOMPARE(comparison.ranked[2].number, std::size_t(2));
    QCOMPARE(comparison.ranked[2].distance, 0.875);
    QCOMPARE(comparison.ranked[2].rank, std::size_t(3));
}

void ComparisonTest::equalDistancesStandInTheOrderOfCases()
{
    const Folders folders(Matrix, SimulatorResults);
    const SComparison comparison = folders.compared({{"Angle", 25, 1}});
    QCOMPARE(comparison.ranked[1].number, std::size_t(0));
    QCOMPARE(comparison.ranked[2].number, std::size_t(2));
}

void ComparisonTest::unknownResultNamesTheKnownOnes()
{
    const Folders folders(Matrix, SimulatorResults);
    QCOMPARE(errorOf([&] {
                 folders.compared({{"Radius", 1, 1}});
             }),
             QString("there is no result \"Radius\"; there are: Angle, Height, Settled (s)"));
}

void ComparisonTest::caseWithoutResultsIsToldApart()
{
    const Folders folders(Matrix, ScriptResults);
    const SComparison comparison = folders.compared({{"mass", 2, 1}});
    QCOMPARE(comparison.ranked.size(), std::size_t(2));
    QCOMPARE(comparison.withoutResults, std::vector<std::size_t>{1});
}

void ComparisonTest::nothingToRankIsAnError()
{
    const Folders folders("Job ID#,A,Simulator Options\n9,1, -c \n", SimulatorResults);
    QCOMPARE(errorOf([&] {
                 folders.compared({{"Angle", 1, 1}});
             }),
             QString("no case of the matrix has all the measured results"));
}

void ComparisonTest::fileHoldsAllColumns()
{
    const Folders folders(Matrix, SimulatorResults);
    std::ostringstream stream;
    writeComparison(folders.compared({{"Angle", 20, 1}, {"Height", 1, 3}}), stream);
    QCOMPARE(stream.str(), std::string("case,A Static Friction,Flag,Angle,Height,distance,rank\n"
                                       "1,0.2,true,25,1,0.0625,1\n"
                                       "0,0.1,true,20,0.5,0.375,2\n"
                                       "2,0.4,false,30,2,0.875,3\n"));
}

void ComparisonTest::numbersReadTheSameWhateverTheLocale()
{
    QCOMPARE(numberFrom(" +0.05 ").value(), 0.05);
    QCOMPARE(numberFrom("true").value(), 1.0);
    QCOMPARE(numberFrom("false").value(), 0.0);
    for (const char* text : {"", " ", "0,5", "1x", "inf", "nan", "-"}) {
        QVERIFY2(!numberFrom(text), text);
    }
    QCOMPARE(numberText(0.1), std::string("0.1"));
}

void ComparisonTest::picturesShowResponseMeasurementAndBestCase()
{
    const Folders folders(Matrix, SimulatorResults);
    const QStringList files = plotComparison(folders.compared({{"Angle", 25, 1}}), folders.root());
    QCOMPARE(files.size(), 2);

    const QImage picture(files[0]);
    QVERIFY(!picture.isNull());
    // Below the legend: the best case has the measured value, so it lies on the line.
    const auto heightOf = [&picture](const QColor& colour) {
        double sum = 0;
        int count = 0;
        for (int y = 90; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const bool hit = picture.pixel(x, y) == colour.rgb();
                sum += hit ? y : 0;
                count += hit ? 1 : 0;
            }
        }
        return count > 100 ? sum / count : -1;
    };
    const double cases = heightOf(QColor(47, 107, 171));
    const double best = heightOf(QColor(24, 140, 90));
    const double measured = heightOf(QColor(200, 80, 30));
    QVERIFY(cases > 0 && best > 0 && measured > 0);
    QVERIFY2(std::abs(best - measured) < 3, qPrintable(QString("%1 %2").arg(best).arg(measured)));

    QFile svg(files[1]);
    QVERIFY(svg.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&svg);
    QStringList texts;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters) {
            texts << reader.text().toString().trimmed();
        }
    }
    QVERIFY(!reader.hasError());
    const QString all = texts.join(' ');
    for (const char* text :
         {"Angle", "A Static Friction", "Flag", "best: case 1", "measured: 25"}) {
        QVERIFY2(all.contains(text), text);
    }
}

void ComparisonTest::picturesOfLikeNamesKeepApart()
{
    const Folders folders(Matrix, "0,a b,1,\n0,a_b,2,\n1,a b,3,\n1,a_b,4,\n");
    const QStringList files =
        plotComparison(folders.compared({{"a b", 1, 1}, {"a_b", 1, 1}}), folders.root());
    QCOMPARE(files.size(), 4);
    QCOMPARE(QSet<QString>(files.begin(), files.end()).size(), 4);
}

TARNEL_TEST_MAIN(ComparisonTest)
#include "comparison_test.moc"
