#include "setup/simulator_options.h"
#include "tests/setup/expected_page.h"
#include "tests/setup/options_page.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <memory>
#include <random>

namespace {

constexpr int WALKS = 40;
constexpr int STEPS = 80;

/// A setting that the file may hold, in the order in which it is applied.
struct SSetting
{
    const char* line; ///< without its value
    const char* widget;
    QStringList values;
};

const QStringList BOTH{"TRUE", "FALSE"};

const std::vector<SSetting> SETTINGS{
    {"PROCESSOR:GENERAL:AUTO GRIDCELL=BOOLEAN:", "m_chkAutoGridResizing", BOTH},
    {"PROCESSOR:GENERAL:AUTO TIMESTEP=BOOLEAN:", "chkAutoTimeStep", BOTH},
    {"PROCESSOR:GENERAL:DYNAMIC DOMAIN=BOOLEAN:", "gbDynamicDomain", BOTH},
    {"PROCESSOR:GENERAL:ENGINE_INDEX=INT:", "m_cbSimulatorEngine", {"0", "1", "2"}},
    {"PROCESSOR:GENERAL:FIXED TIMESTEP=DOUBLE:", "sbFixedTime", {"1e-06", "0.5", "3"}},
    {"PROCESSOR:GENERAL:NUM THREADS=INT:", "sbNumProcs", {"2", "8"}},
    {"PROCESSOR:GENERAL:PSI=INT:", "m_dynamicDomainNumberOfChecks", {"3", "42"}},
    {"PROCESSOR:GENERAL:TAU=DOUBLE:", "m_dynamicDomainCheckInterval", {"0.05", "2"}},
    {"PROCESSOR:GPU PARAMETERS:GPU DOMAIN SPLIT DIMENSION=UNSIGNED INT:",
     "m_cbGPUSplitAxis",
     {"0", "1", "2"}},
    {"PROCESSOR:WRITE:COMPRESS DATA=BOOLEAN:", "m_chkCompressData", BOTH},
    {"PROCESSOR:WRITE:INTERVAL=DOUBLE:", "fbWriteEvery", {"0.01", "1"}},
};

const QStringList WIDGETS{"sbSimTime",
                          "fbWriteEvery",
                          "sbGridSizeM",
                          "sbFixedTime",
                          "sbStepLimit",
                          "m_dynamicDomainCheckInterval",
                          "m_dynamicDomainParticleDisplacement",
                          "sbNumProcs",
                          "m_dynamicDomainNumberOfChecks",
                          "leDeviceIndex",
                          "cbRewind",
                          "cbRecalculate",
                          "m_chkSimExport",
                          "m_chkConnectionCleanUp",
                          "m_chkCompressData",
                          "m_chkSinglePrecisionContactDetection",
                          "m_cbGPUSplitAxis",
                          "m_chkAutoGridResizing",
                          "chkAutoTimeStep",
                          "chkStepLimit",
                          "gbDynamicDomain",
                          "chkGPUSplit",
                          "m_cbSimulatorEngine",
                          "m_chkAlternativeContactDetection",
                          "gbCouplingServer",
                          "m_leCouplingLocation",
                          "leCouplingCommand"};

/// State, index, number or text.
QVariant contentOf(const QWidget& widget)
{
    for (const char* property : {"checked", "currentIndex", "value"}) {
        const QVariant content = widget.property(property);
        if (content.isValid()) {
            return content;
        }
    }
    return widget.property("text");
}

} // namespace

/// A user who does whatever comes to his mind, and a second hand that keeps the books.
class CProcessingOptionsWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { SimulatorOptions::initialise(); }
    void init() { CTestEnvironment::reset(); }
    void everyStepKeepsTheRules_data();
    void everyStepKeepsTheRules();

private:
    int below(int end) { return int(m_random() % unsigned(end)); }
    template <class List>
    auto oneOf(const List& list)
    {
        return list[below(int(list.size()))];
    }
    QString step();
    QString changeDeck();
    QString enter();
    QString touch(const QString& name);
    void handle(QWidget& widget);
    QString difference() const;

    std::mt19937 m_random;
    std::unique_ptr<COptionsPage> m_page;
    std::unique_ptr<CExpectedPage> m_expected;
    QMap<QString, QString> m_file;    ///< values by the line's begin, of the file beside the deck
    QMap<QString, QString> m_applied; ///< of all files that were read
};

QString CProcessingOptionsWalkTest::step()
{
    switch (below(10)) {
    case 0:
        return changeDeck();
    case 1:
    case 2:
        return enter();
    default:
        return touch(oneOf(WIDGETS));
    }
}

/// Another deck: another format, another file beside it.
QString CProcessingOptionsWalkTest::changeDeck()
{
    const int format = oneOf(QList<int>{0, 1, 2, 5, 11});
    COptionsPage::setFormat(format);
    m_file.clear();
    QByteArray lines;
    for (const SSetting& setting : SETTINGS) {
        if (below(3) == 0) {
            const QString value = oneOf(setting.values);
            m_file[setting.line] = value;
            lines += setting.line + value.toLatin1() + '\n';
        }
    }
    m_page->writeDfg(lines);
    return QStringLiteral("deck of format %1 with %2")
        .arg(format)
        .arg(QString::fromLatin1(lines).replace('\n', ' '));
}

QString CProcessingOptionsWalkTest::enter()
{
    for (auto setting = m_file.cbegin(); setting != m_file.cend(); ++setting) {
        if (!m_applied.contains(setting.key())) {
            m_applied[setting.key()] = setting.value();
        }
    }
    QStringList changed;
    for (const SSetting& setting : SETTINGS) {
        const QString wanted = m_applied.value(setting.line);
        const QVariant content = contentOf(m_page->child<>(setting.widget));
        const bool same = content.type() == QVariant::Bool
                              ? content.toBool() == (wanted == QLatin1String("TRUE"))
                              : content.toDouble() == wanted.toDouble();
        if (!wanted.isEmpty() && !same) {
            changed << setting.widget;
        }
    }
    m_page->enter();
    for (const QString& widget : qAsConst(changed)) {
        m_expected->change(widget);
    }
    m_expected->enter();
    return QStringLiteral("enter");
}

QString CProcessingOptionsWalkTest::touch(const QString& name)
{
    auto& widget = m_page->child<>(name);
    if (!widget.isVisible() || !widget.isEnabled()) {
        return QString();
    }
    const QVariant before = contentOf(widget);
    handle(widget);
    if (contentOf(widget) != before) {
        m_expected->change(name);
    }
    return name;
}

/// By the keyboard; an input is ended or left open.
void CProcessingOptionsWalkTest::handle(QWidget& widget)
{
    widget.setFocus();
    if (auto* number = qobject_cast<CDoubleSpinBox*>(&widget)) {
        number->selectAll();
        QTest::keyClicks(number, oneOf(QStringList{"0.5", "3", "1e-05", "12345.678"}));
        if (below(2) == 0) {
            QTest::keyClick(number, oneOf(QList<Qt::Key>{Qt::Key_Return, Qt::Key_Tab, Qt::Key_Up}));
        }
    } else if (auto* edit = qobject_cast<QLineEdit*>(&widget)) {
        edit->end(false);
        QTest::keyClick(edit, oneOf(QList<Qt::Key>{Qt::Key_Backspace, Qt::Key_1, Qt::Key_2}));
    } else if (contentOf(widget).type() == QVariant::Bool) {
        QTest::keyClick(&widget, Qt::Key_Space);
    } else {
        QTest::keyClick(&widget, below(2) == 0 ? Qt::Key_Up : Qt::Key_Down);
    }
}

/// Empty where store and page are as expected.
QString CProcessingOptionsWalkTest::difference() const
{
    const CDeckStore::Coupling coupling = COptionsPage::coupling();
    if (QString::fromStdString(coupling.first) != m_expected->coupling.first ||
        QString::fromStdString(coupling.second) != m_expected->coupling.second) {
        return QStringLiteral("coupling ") + QString::fromStdString(coupling.second);
    }
    const auto& enabled = m_expected->enabled;
    for (auto rule = enabled.cbegin(); rule != enabled.cend(); ++rule) {
        const auto& widget = m_page->child<>(rule.key());
        // A group that is off disables its fields as well, whatever the rules say of them.
        if (widget.isEnabledTo(widget.parentWidget()) != rule.value()) {
            return rule.key();
        }
    }
    return QString();
}

void CProcessingOptionsWalkTest::everyStepKeepsTheRules_data()
{
    QTest::addColumn<int>("walk");
    for (int walk = 0; walk < WALKS; ++walk) {
        QTest::addRow("walk %d", walk) << walk;
    }
}

void CProcessingOptionsWalkTest::everyStepKeepsTheRules()
{
    QFETCH(int, walk);
    m_random.seed(unsigned(walk));
    m_page = std::make_unique<COptionsPage>();
    m_expected = std::make_unique<CExpectedPage>(*m_page);
    m_applied.clear();
    m_page->page().show();
    QApplication::setActiveWindow(&m_page->page());
    QStringList steps{changeDeck()};
    for (int count = 0; count < STEPS; ++count) {
        steps << step();
        const QString found = difference();
        QVERIFY2(found.isEmpty(), qPrintable(found + " after " + steps.join(", ")));
    }
    m_expected.reset();
    m_page.reset();
}

TARNEL_TEST_MAIN(CProcessingOptionsWalkTest)

#include "processing_options_walk_test.moc"
