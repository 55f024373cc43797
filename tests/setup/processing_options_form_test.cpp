#include "setup/simulator_options.h"
#include "tests/setup/options_page.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <limits>
#include <memory>

class CProcessingOptionsFormTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void widgetsAndTexts_data();
    void widgetsAndTexts();
    void numbers_data();
    void numbers();
    void wholeNumbers_data();
    void wholeNumbers();
    void switchesStartUnchecked_data();
    void switchesStartUnchecked();
    void choices();
    void hintsAndToolTip();
    void enabledAtStart();
    void noNumberStartsOutOfItsBounds();
    void focusPolicies();
    void tabOrder();
    void buttonSizes();
    void deviceIndexTakesDigitsBlanksBracketsAndPlus();
    void windowTitleSizeAndColumns();

private:
    std::unique_ptr<COptionsPage> m_page;
};

void CProcessingOptionsFormTest::initTestCase()
{
    SimulatorOptions::initialise();
}

void CProcessingOptionsFormTest::init()
{
    CTestEnvironment::reset();
    m_page = std::make_unique<COptionsPage>();
}

void CProcessingOptionsFormTest::widgetsAndTexts_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, const char* kind, const char* text = "") {
        QTest::newRow(name) << QString(kind) << QString::fromUtf8(text);
    };
    row("gbTimeStep", "QGroupBox", "Time Step");
    row("chkAutoTimeStep", "QCheckBox", "Auto Time step");
    row("lblFixedTS", "QLabel", "Fixed Time Step:");
    row("sbFixedTime", "CDoubleSpinBox");
    row("SimulationTime", "QGroupBox", "Simulation Time");
    row("lblTotalTime", "QLabel", "Total Time:");
    row("sbSimTime", "CDoubleSpinBox");
    row("chkStepLimit", "QCheckBox", "Limit Simulation Steps");
    row("sbStepLimit", "CDoubleSpinBox");
    row("formGroupBox", "QGroupBox", "Data Save");
    row("m_chkSimExport", "QCheckBox", "Export Data per Interval");
    row("lblSaveInterval", "QLabel", "Target Save Interval:");
    row("fbWriteEvery", "CDoubleSpinBox");
    row("m_chkCompressData", "QCheckBox", "Compress Data");
    row("groupBox", "QGroupBox", "Simulator Grid");
    row("m_chkAutoGridResizing", "QCheckBox", "Auto Grid Resizing");
    row("lblCellSize", "QLabel", "Cell Size:");
    row("sbGridSizeM", "CDoubleSpinBox");
    row("formGroupBox_2", "QGroupBox", "Hardware Options");
    row("tlSimulatorEngine", "QLabel", "Selected Engine:");
    row("m_cbSimulatorEngine", "CComboBox");
    row("tlCPUcores", "QLabel", "Number of CPU Cores:");
    row("sbNumProcs", "CIntegerSpinBox");
    row("tlDeviceIndex", "QLabel", "Device Index:");
    row("leDeviceIndex", "QLineEdit");
    row("chkGPUSplit", "QGroupBox", "GPU Split");
    row("m_lblGPUSplitAxis", "QLabel", "GPU Split Axis:");
    row("m_cbGPUSplitAxis", "CComboBox");
    row("gbDynamicDomain", "QGroupBox", "Dynamic Domain Method");
    row("m_lblTau", "QLabel", "Check Interval:");
    row("m_dynamicDomainCheckInterval", "CDoubleSpinBox");
    row("m_lblPsi", "QLabel", "Number of Checks:");
    row("m_dynamicDomainNumberOfChecks", "CIntegerSpinBox");
    row("m_lblRadiusCoef", "QLabel", "Displacement of Particle:");
    row("m_dynamicDomainParticleDisplacement", "CDoubleSpinBox");
    row("gbCouplingServer", "QGroupBox", "Coupling server");
    row("m_leCouplingLocation", "QLineEdit");
    row("m_pbCouplingLocationSelect", "QPushButton", "...");
    row("m_lblCouplingCommand", "QLabel", "Coupling Command:");
    row("leCouplingCommand", "QLineEdit");
    row("groupBox_2", "QGroupBox", "Advanced");
    row("cbRewind", "QCheckBox", "Rewind Simulation");
    row("cbRecalculate", "QCheckBox", "Recalculate Particle Properties");
    row("m_chkConnectionCleanUp", "QCheckBox", "Prevent connection clean-up");
    row("m_chkSimulationOutputs", "QCheckBox",
        "Delete H5 files after simulation? \xf0\x9f\x9b\x88");
    row("m_chkAlternativeContactDetection", "QGroupBox",
        "Alternative contact detection (GPU Only)");
    row("m_chkSinglePrecisionContactDetection", "QCheckBox", "Single precision contact detection");
}

void CProcessingOptionsFormTest::widgetsAndTexts()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);

    const auto& widget = m_page->child<>(QTest::currentDataTag());
    QCOMPARE(QString::fromLatin1(widget.metaObject()->className()), kind);
    if (!text.isEmpty()) {
        const char* property = kind == QStringLiteral("QGroupBox") ? "title" : "text";
        QCOMPARE(widget.property(property).toString(), text);
    }
}

void CProcessingOptionsFormTest::numbers_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<double>("value");

    const auto row = [](const char* name, double minimum, double maximum, int decimals,
                        const char* suffix, double value) {
        QTest::newRow(name) << minimum << maximum << decimals << QString(suffix) << value;
    };
    row("sbFixedTime", 1e-12, 1e6, 12, " s", 1e-12);
    row("sbSimTime", 1e-6, 1e5, 6, " s", 1e-6);
    row("sbStepLimit", 0.0, std::numeric_limits<double>::max(), 12, " ", 0.0);
    row("fbWriteEvery", 0.0, 1e6, 6, " s", 1e-12);
    row("sbGridSizeM", 1e-12, 1e12, 12, " R min", 2.5);
    row("m_dynamicDomainCheckInterval", 1e-12, 1e12, 12, " s", 1e-12);
    row("m_dynamicDomainParticleDisplacement", 1e-12, 1e12, 12, " % of R min", 1e-12);
}

void CProcessingOptionsFormTest::numbers()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(int, decimals);
    QFETCH(QString, suffix);
    QFETCH(double, value);

    const auto& box = m_page->child<CDoubleSpinBox>(QTest::currentDataTag());
    QCOMPARE(box.decimals(), decimals);
    // Qt rounds a bound to the decimals: six of them turn 1e-12 into 0.
    QVERIFY(box.minimum() == minimum);
    QVERIFY(box.maximum() == maximum);
    QCOMPARE(box.suffix(), suffix);
    QVERIFY(box.storedValue() == value);
    QVERIFY(box.text().endsWith(suffix));
}

void CProcessingOptionsFormTest::wholeNumbers_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");

    QTest::newRow("sbNumProcs") << 1 << 2147483647;
    QTest::newRow("m_dynamicDomainNumberOfChecks") << 0 << 99;
}

void CProcessingOptionsFormTest::wholeNumbers()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);

    const auto& box = m_page->child<CIntegerSpinBox>(QTest::currentDataTag());
    QCOMPARE(box.minimum(), minimum);
    QCOMPARE(box.maximum(), maximum);
    QCOMPARE(box.value(), minimum);
    QCOMPARE(box.storedValue(), minimum);
}

void CProcessingOptionsFormTest::switchesStartUnchecked_data()
{
    QTest::addColumn<bool>("isGroup");

    for (const char* name :
         {"chkAutoTimeStep", "chkStepLimit", "m_chkSimExport", "m_chkCompressData",
          "m_chkAutoGridResizing", "cbRewind", "cbRecalculate", "m_chkConnectionCleanUp",
          "m_chkSimulationOutputs", "m_chkSinglePrecisionContactDetection"}) {
        QTest::newRow(name) << false;
    }
    for (const char* name : {"chkGPUSplit", "gbDynamicDomain", "gbCouplingServer",
                             "m_chkAlternativeContactDetection"}) {
        QTest::newRow(name) << true;
    }
}

void CProcessingOptionsFormTest::switchesStartUnchecked()
{
    QFETCH(bool, isGroup);

    const char* name = QTest::currentDataTag();
    if (isGroup) {
        QVERIFY(m_page->child<QGroupBox>(name).isCheckable());
        QVERIFY(!m_page->child<QGroupBox>(name).isChecked());
    } else {
        QVERIFY(!m_page->child<QCheckBox>(name).isChecked());
    }
}

void CProcessingOptionsFormTest::choices()
{
    const auto textsOf = [this](const char* name) {
        QStringList texts;
        const auto& box = m_page->child<QComboBox>(name);
        for (int index = 0; index < box.count(); ++index) {
            texts.append(box.itemText(index));
        }
        return texts;
    };
    QCOMPARE(textsOf("m_cbSimulatorEngine"),
             QStringList({"CPU Solver", "GPU OCL Solver", "GPU CUDA Solver"}));
    QCOMPARE(textsOf("m_cbGPUSplitAxis"), QStringList({"X", "Y", "Z"}));
    QCOMPARE(m_page->child<QComboBox>("m_cbSimulatorEngine").currentIndex(), 0);
    QCOMPARE(m_page->child<QComboBox>("m_cbGPUSplitAxis").currentIndex(), 0);
}

void CProcessingOptionsFormTest::hintsAndToolTip()
{
    const auto hint = [this](const char* name) {
        return m_page->child<QLineEdit>(name).placeholderText();
    };
    QCOMPARE(hint("leDeviceIndex"), QStringLiteral("Leave blank to use 0"));
    QCOMPARE(hint("m_leCouplingLocation"), QStringLiteral("Select coupling file location"));
    QCOMPARE(hint("leCouplingCommand"), QStringLiteral("Enter additional coupling arguments"));
    const auto& outputs = m_page->child<QCheckBox>("m_chkSimulationOutputs");
    QCOMPARE(outputs.toolTip(), QStringLiteral("Available only for local simulation"));
    QCOMPARE(outputs.toolTipDuration(), std::numeric_limits<int>::max());
}

void CProcessingOptionsFormTest::enabledAtStart()
{
    for (const char* name : {"sbFixedTime", "lblFixedTS", "sbGridSizeM", "chkGPUSplit",
                             "m_chkAlternativeContactDetection"}) {
        QVERIFY2(m_page->isEnabled(name), name);
    }
    for (const char* name : {"sbStepLimit", "m_dynamicDomainCheckInterval", "leCouplingCommand",
                             "m_cbGPUSplitAxis", "m_chkSinglePrecisionContactDetection"}) {
        QVERIFY2(!m_page->isEnabled(name), name);
    }
}

void CProcessingOptionsFormTest::noNumberStartsOutOfItsBounds()
{
    for (const CDoubleSpinBox* box : m_page->page().findChildren<CDoubleSpinBox*>()) {
        QVERIFY2(box->styleSheet().isEmpty(), qPrintable(box->objectName()));
    }
}

void CProcessingOptionsFormTest::focusPolicies()
{
    for (const char* name :
         {"sbFixedTime", "sbSimTime", "sbStepLimit", "fbWriteEvery", "sbGridSizeM",
          "m_dynamicDomainNumberOfChecks", "m_dynamicDomainCheckInterval"}) {
        QVERIFY2(m_page->child<>(name).focusPolicy() == Qt::StrongFocus, name);
    }
    // Qt's own for a spin box.
    for (const char* name : {"sbNumProcs", "m_dynamicDomainParticleDisplacement"}) {
        QVERIFY2(m_page->child<>(name).focusPolicy() == Qt::WheelFocus, name);
    }
}

void CProcessingOptionsFormTest::tabOrder()
{
    const QStringList expected{"fbWriteEvery", "gbDynamicDomain", "m_dynamicDomainCheckInterval",
                               "m_dynamicDomainNumberOfChecks",
                               "m_dynamicDomainParticleDisplacement"};
    QStringList order;
    const QWidget* widget = &m_page->child<>(expected.first());
    while (order.size() < expected.size()) {
        // Labels and the fields within the spin boxes stand in the chain, too.
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 &&
            !widget->objectName().startsWith(QStringLiteral("qt_"))) {
            order.append(widget->objectName());
        }
        widget = widget->nextInFocusChain();
    }
    QCOMPARE(order, expected);
}

void CProcessingOptionsFormTest::buttonSizes()
{
    const auto& button = m_page->child<QPushButton>("m_pbCouplingLocationSelect");
    QCOMPARE(button.maximumSize(), QSize(22, 22));
    QVERIFY(!button.autoDefault());
    QCOMPARE(m_page->child<QLineEdit>("m_leCouplingLocation").maximumHeight(), 22);
}

void CProcessingOptionsFormTest::deviceIndexTakesDigitsBlanksBracketsAndPlus()
{
    auto& edit = m_page->child<QLineEdit>("leDeviceIndex");
    for (const char* text : {"0 1", "(0)", "+1"}) {
        edit.clear();
        QTest::keyClicks(&edit, text);
        QCOMPARE(edit.text(), QString(text));
    }
    QTest::keyClicks(&edit, QStringLiteral("aZ,.-;_"));
    QCOMPARE(edit.text(), QStringLiteral("+1"));
}

void CProcessingOptionsFormTest::windowTitleSizeAndColumns()
{
    QCOMPARE(m_page->page().windowTitle(), QStringLiteral("ProcessingOptionsFrameUI"));
    QCOMPARE(m_page->page().size(), QSize(549, 541));
    m_page->page().resize(m_page->page().minimumSizeHint());
    m_page->page().show();
    const QRect left = m_page->child<>("verticalFrame1").geometry();
    const QRect right = m_page->child<>("verticalFrame").geometry();
    QVERIFY(left.right() < right.left());
    for (const QWidget* label : m_page->page().findChildren<QLabel*>()) {
        QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->objectName()));
    }
    for (const QWidget* box : m_page->page().findChildren<QCheckBox*>()) {
        QVERIFY2(box->width() >= box->sizeHint().width(), qPrintable(box->objectName()));
    }
}

TARNEL_TEST_MAIN(CProcessingOptionsFormTest)

#include "processing_options_form_test.moc"
