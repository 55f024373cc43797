#include "setup/simulator_options.h"
#include "tests/setup/options_page.h"
#include "tests/setup/simulator_flags.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QMap>
#include <QTest>

#include <random>

namespace {

using Texts = QMap<QString, QString>;

const QString Disabled = QStringLiteral("Disabled");

/// Numbers and the flags that they feed.
const Texts NumberFlags{{"sbSimTime", " -r "},
                        {"fbWriteEvery", " -w "},
                        {"sbGridSizeM", " -g "},
                        {"sbFixedTime", " -t "},
                        {"sbStepLimit", " -n "},
                        {"m_dynamicDomainCheckInterval", " --dyn-interval "},
                        {"m_dynamicDomainParticleDisplacement", " --dyn-disp "}};
const Texts CountFlags{{"sbNumProcs", " -p "}, {"m_dynamicDomainNumberOfChecks", " --dyn-check "}};
/// Switches whose flags stand alone when they are on.
const Texts LoneFlags{{"cbRewind", " -R "},
                      {"cbRecalculate", " --particle-properties "},
                      {"m_chkSimExport", " --simExport "},
                      {"gbCouplingServer", " --cs "},
                      {"m_chkAutoGridResizing", " --auto-grid "},
                      {"m_chkConnectionCleanUp", " --wait "}};
/// Switches whose flags say "1" or "0".
const Texts BinaryFlags{{"gbDynamicDomain", " --dyn "},
                        {"m_chkCompressData", " --compress-data "},
                        {"m_chkSinglePrecisionContactDetection", " --sp "}};
/// Switches with effects of their own.
const QStringList OtherSwitches{"chkAutoTimeStep", "chkStepLimit", "chkGPUSplit",
                                "m_chkAlternativeContactDetection"};

QStringList switches()
{
    return LoneFlags.keys() + BinaryFlags.keys() + OtherSwitches;
}

/// What the options are to be, told a second time: widget by widget, in the order of the events.
class COptionsModel
{
public:
    COptionsModel()
    {
        for (const QString& name : switches()) {
            m_values[name] = false;
        }
    }

    QString options;

    void change(const QString& widget, const QVariant& value)
    {
        if (m_values.value(widget) == value) {
            return;
        }
        m_values[widget] = value;
        follow(widget);
        rebuild();
    }

    void enter(int deckFormat)
    {
        for (const auto& [flag, text] : firstTexts(deckFormat)) {
            if (!m_table.contains(flag)) {
                m_table[flag] = text;
            }
        }
        set(" -E ", number("m_cbSimulatorEngine"));
        followTimeStep();
        set(" -n ", isOn("chkStepLimit") ? decimals("sbStepLimit") : Disabled);
        set(" -g ", decimals("sbGridSizeM"));
        followDynamicDomain();
        set(" --gpu-split ", isOn("chkGPUSplit") ? axis() : Disabled);
        rebuild();
    }

private:
    bool isOn(const QString& widget) const { return m_values[widget].toBool(); }
    QString binary(bool on) const { return on ? "1" : "0"; }
    QString lone(bool on) const { return on ? QString() : Disabled; }
    QString number(const QString& widget) const
    {
        return QString::number(m_values[widget].toInt());
    }
    QString decimals(const QString& widget) const
    {
        return QString::number(m_values[widget].toDouble(), 'f', 6);
    }
    QString axis() const
    {
        return QStringList{"X", "Y", "Z"}[m_values["m_cbGPUSplitAxis"].toInt()];
    }

    void set(const QString& flag, const QString& text)
    {
        if (m_table.contains(flag)) {
            m_table[flag] = text;
        }
    }

    std::vector<std::pair<QString, QString>> firstTexts(int deckFormat) const
    {
        const QString device = m_values["leDeviceIndex"].toString();
        std::vector<std::pair<QString, QString>> texts{
            {" -D ", device.isEmpty() ? Disabled : device},
            {" -E ", number("m_cbSimulatorEngine")},
            {" -n ", Disabled},
            {" --gpu-split ", Disabled}};
        for (auto flag = NumberFlags.begin(); flag != NumberFlags.end(); ++flag) {
            texts.emplace_back(*flag, decimals(flag.key()));
        }
        for (auto flag = CountFlags.begin(); flag != CountFlags.end(); ++flag) {
            texts.emplace_back(*flag, number(flag.key()));
        }
        for (auto flag = LoneFlags.begin(); flag != LoneFlags.end(); ++flag) {
            texts.emplace_back(*flag, lone(isOn(flag.key())));
        }
        texts.emplace_back(" --dyn ", binary(isOn("gbDynamicDomain")));
        if (deckFormat >= 2) {
            texts.emplace_back(" --compress-data ", binary(isOn("m_chkCompressData")));
            texts.emplace_back(" --sp ", Disabled);
            texts.emplace_back(" --acd ", Disabled);
        }
        return texts;
    }

    void followTimeStep() { set(" -t ", isOn("chkAutoTimeStep") ? "0" : decimals("sbFixedTime")); }

    void followDynamicDomain()
    {
        const bool on = isOn("gbDynamicDomain");
        set(" --dyn-interval ", on ? decimals("m_dynamicDomainCheckInterval") : Disabled);
        set(" --dyn-check ", on ? number("m_dynamicDomainNumberOfChecks") : Disabled);
        set(" --dyn-disp ", on ? decimals("m_dynamicDomainParticleDisplacement") : Disabled);
    }

    void followEngine()
    {
        const bool gpu = number("m_cbSimulatorEngine") == "1";
        const bool alternative = isOn("m_chkAlternativeContactDetection");
        const bool single = isOn("m_chkSinglePrecisionContactDetection");
        set(" -E ", number("m_cbSimulatorEngine"));
        set(" --gpu-split ", gpu ? axis() : Disabled);
        set(" --acd ", binary(gpu && alternative));
        set(" --sp ", binary(gpu && single));
    }

    void follow(const QString& widget)
    {
        set(NumberFlags.value(widget), decimals(widget));
        set(CountFlags.value(widget), number(widget));
        set(LoneFlags.value(widget), lone(isOn(widget)));
        set(BinaryFlags.value(widget), binary(isOn(widget)));
        if (widget == "leDeviceIndex") {
            set(" -D ", m_values[widget].toString());
        } else if (widget == "m_cbGPUSplitAxis") {
            set(" --gpu-split ", axis());
        } else if (widget == "m_cbSimulatorEngine") {
            followEngine();
        } else if (widget == "chkAutoTimeStep") {
            followTimeStep();
        } else if (widget == "chkStepLimit") {
            set(" -n ", isOn(widget) ? decimals("sbStepLimit") : Disabled);
        } else if (widget == "gbDynamicDomain") {
            followDynamicDomain();
        } else if (widget == "chkGPUSplit") {
            set(" --gpu-split ", isOn(widget) ? axis() : Disabled);
        } else if (widget == "m_chkAlternativeContactDetection") {
            set(" --acd ", binary(isOn(widget)));
            set(" --sp ", binary(isOn(widget) && isOn("m_chkSinglePrecisionContactDetection")));
        }
    }

    void rebuild()
    {
        options = " -c ";
        for (const std::string& each : FLAGS_IN_ORDER) {
            const QString flag = QString::fromStdString(each);
            if (m_table.value(flag, Disabled) != Disabled) {
                options += flag + m_table[flag];
            }
        }
    }

    Texts m_table;
    QMap<QString, QVariant> m_values{{"sbSimTime", 1e-6},
                                     {"fbWriteEvery", 1e-12},
                                     {"sbGridSizeM", 2.5},
                                     {"sbFixedTime", 1e-12},
                                     {"sbStepLimit", 0.0},
                                     {"m_dynamicDomainCheckInterval", 1e-12},
                                     {"m_dynamicDomainParticleDisplacement", 1e-12},
                                     {"sbNumProcs", 1},
                                     {"m_dynamicDomainNumberOfChecks", 0},
                                     {"m_cbSimulatorEngine", 0},
                                     {"m_cbGPUSplitAxis", 0},
                                     {"leDeviceIndex", ""}};
};

/// A widget and what it is set to; no widget stands for an entry to the page.
struct SChange
{
    QString widget;
    QVariant value;
};

class CRandomChanges
{
public:
    explicit CRandomChanges(unsigned int seed)
        : m_random(seed)
    {
    }

    int below(int end) { return int(m_random() % unsigned(end)); }

    SChange next()
    {
        switch (below(8)) {
        case 0:
            return {};
        case 1:
            return {oneOf(NumberFlags.keys()), (1 + below(40)) / 8.0};
        case 2:
            return {oneOf(CountFlags.keys()), 1 + below(9)};
        case 3:
            return {"m_cbSimulatorEngine", below(3)};
        case 4:
            return {"m_cbGPUSplitAxis", below(3)};
        case 5:
            return {"leDeviceIndex", oneOf({"", "0", "0 1", "Disabled"})};
        default:
            return {oneOf(switches()), below(2) == 1};
        }
    }

private:
    QString oneOf(const QStringList& texts) { return texts[below(texts.size())]; }

    std::mt19937 m_random;
};

} // namespace

/// The option string behind any order of changes and entries.
class CProcessingOptionsSequenceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { SimulatorOptions::initialise(); }
    void init() { CTestEnvironment::reset(); }
    void optionsFollowAnyOrderOfChanges_data();
    void optionsFollowAnyOrderOfChanges();
};

void CProcessingOptionsSequenceTest::optionsFollowAnyOrderOfChanges_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        QTest::addRow("%u", seed) << seed;
    }
}

void CProcessingOptionsSequenceTest::optionsFollowAnyOrderOfChanges()
{
    QFETCH(unsigned int, seed);
    CRandomChanges changes(seed);
    COptionsPage page(changes.below(4));
    COptionsModel model;
    for (int step = 0; step < 200; ++step) {
        const SChange change = changes.next();
        if (change.widget.isEmpty()) {
            const int format = changes.below(4);
            COptionsPage::setFormat(format);
            page.enter();
            model.enter(format);
        } else {
            page.set(change.widget, change.value);
            model.change(change.widget, change.value);
        }
        QVERIFY2(COptionsPage::options() == model.options,
                 qPrintable(QStringLiteral("step %1, %2 set to %3:\n%4\n%5")
                                .arg(step)
                                .arg(change.widget, change.value.toString(),
                                     COptionsPage::options(), model.options)));
    }
}

TARNEL_TEST_MAIN(CProcessingOptionsSequenceTest)
#include "processing_options_sequence_test.moc"
