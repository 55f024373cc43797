#include "tests/fuzz/targets.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QtTest>

namespace {

using Target = void (*)(std::string_view);

struct SFolder
{
    const char* name;
    Target target;
};

constexpr SFolder FOLDERS[] = {
    {"deck", FuzzTargets::deck},           {"dfg", FuzzTargets::dfg},
    {"jobMatrix", FuzzTargets::jobMatrix}, {"jobLists", FuzzTargets::jobLists},
    {"resultCsv", FuzzTargets::resultCsv},
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace
Q_DECLARE_METATYPE(Target)

class TestReplay : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void inputIsReadOrRefused_data()
    {
        QTest::addColumn<Target>("target");
        QTest::addColumn<QString>("path");
        for (const SFolder& folder : FOLDERS) {
            const QDir inputs(QStringLiteral(FUZZ_CORPUS "/") + folder.name);
            const QStringList names = inputs.entryList(QDir::Files);
            QVERIFY2(!names.isEmpty(), qPrintable(inputs.path()));
            for (const QString& name : names) {
                QTest::addRow("%s/%s", folder.name, qPrintable(name))
                    << folder.target << inputs.filePath(name);
            }
        }
    }
    /// Fails by what escapes the target; a fault of the memory ends the program.
    void inputIsReadOrRefused()
    {
        QFETCH(Target, target);
        QFETCH(QString, path);
        const QByteArray bytes = contentOf(path);
        target({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    }
};

TARNEL_TEST_MAIN(TestReplay)
#include "replay_test.moc"
