#include "setup/processing_options_frame.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "setup/simulator_options.h"
#include "widgets/units_none.h"
#include "widgets/units_time.h"

#include <QGridLayout>
#include <QRegularExpressionValidator>

#include <algorithm>
#include <any>
#include <limits>

namespace {

using namespace SimulatorValue;

/// First deck format whose simulator knows of compression and of the GPU's contact detection.
constexpr int NEWER_ARGUMENTS_FORMAT = 2;

void setIndex(QComboBox& box, const std::any& value)
{
    if (value.type() == typeid(int)) {
        box.setCurrentIndex(std::any_cast<int>(value));
    } else if (value.type() == typeid(unsigned long)) {
        box.setCurrentIndex(static_cast<int>(std::any_cast<unsigned long>(value)));
    }
}

/// The alternative contact detection is the opposite of the legacy mode.
bool groupState(const std::string& key, bool value)
{
    return key == SimulatorOptions::LegacyModeKey ? !value : value;
}

void apply(const std::string& key, const std::any& value, QWidget* widget)
{
    if (auto* checkBox = qobject_cast<QCheckBox*>(widget)) {
        checkBox->setChecked(std::any_cast<bool>(value));
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setChecked(groupState(key, std::any_cast<bool>(value)));
    } else if (auto* comboBox = qobject_cast<CComboBox*>(widget)) {
        setIndex(*comboBox, value);
    } else if (auto* integerBox = qobject_cast<CIntegerSpinBox*>(widget)) {
        integerBox->setValue(std::any_cast<int>(value));
    } else if (auto* doubleBox = qobject_cast<CDoubleSpinBox*>(widget)) {
        doubleBox->setValue(std::any_cast<double>(value));
    }
}

/// Width of the labels before the fields of a group.
int labelWidth(const QGridLayout& grid)
{
    int width = 0;
    for (int item = 0; item < grid.count(); ++item) {
        int row = 0;
        int column = 0;
        int rowSpan = 0;
        int columnSpan = 0;
        grid.getItemPosition(item, &row, &column, &rowSpan, &columnSpan);
        if (column == 0 && columnSpan == 1) {
            width = std::max(width, grid.itemAt(item)->sizeHint().width());
        }
    }
    return width;
}

/// Makes the fields of all groups of a page's column begin at the same place.
void alignFields(const QWidget& column)
{
    std::vector<QGridLayout*> grids;
    int width = 0;
    for (QGroupBox* group :
         column.findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (auto* grid = qobject_cast<QGridLayout*>(group->layout())) {
            grids.push_back(grid);
            width = std::max(width, labelWidth(*grid));
        }
    }
    for (QGridLayout* grid : grids) {
        grid->setColumnMinimumWidth(0, width);
    }
}

} // namespace

CConnectionTable<CProcessingOptionsFrame> CProcessingOptionsFrame::s_connections;

CProcessingOptionsFrame::CProcessingOptionsFrame(QWidget* parent)
    : IFrame(parent)
    , m_dfgReader(std::make_shared<CDFGInputOutput>())
{
    m_lastDeck.m_sName = "Default";
    setupUi(this);
    fillChoices();
    mapKeys();
    sbFixedTime->setEnabled(true);
    lblFixedTS->setEnabled(true);
    setupNumbers();
    leDeviceIndex->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9 ()+]*")), this));
    setSuffixes();
    setupConnections();
    alignFields(*verticalFrame1);
    alignFields(*verticalFrame);
}

CProcessingOptionsFrame::~CProcessingOptionsFrame()
{
    s_connections.release(this);
}

void CProcessingOptionsFrame::fillChoices()
{
    m_cbSimulatorEngine->addItems(SimulatorOptions::Engines);
    m_cbGPUSplitAxis->addItems(SimulatorOptions::SplitAxes);
    m_cbSimulatorEngine->setCurrentIndex(0);
}

void CProcessingOptionsFrame::mapKeys()
{
    using namespace SimulatorOptions;
    m_widgetForKey = {
        {AutoGridCellKey, m_chkAutoGridResizing},
        {AutoTimeStepKey, chkAutoTimeStep},
        {DynamicDomainKey, gbDynamicDomain},
        {EngineIndexKey, m_cbSimulatorEngine},
        {FixedTimeStepKey, sbFixedTime},
        {ThreadsKey, sbNumProcs},
        {PsiKey, m_dynamicDomainNumberOfChecks},
        {RadiusCoefficientKey, m_dynamicDomainParticleDisplacement},
        {TauKey, m_dynamicDomainCheckInterval},
        {SplitDimensionKey, m_cbGPUSplitAxis},
        {WriteIntervalKey, fbWriteEvery},
        {WriteTotalKey, sbSimTime},
        {CompressDataKey, m_chkCompressData},
        {SinglePrecisionKey, m_chkSinglePrecisionContactDetection},
        {LegacyModeKey, m_chkAlternativeContactDetection},
    };
}

void CProcessingOptionsFrame::setupNumbers()
{
    CUnitsConverter* none = CUnitsNone::instance();
    CUnitsConverter* time = CUnitsTime::instance();
    sbFixedTime->setup(1e-12, 1e6, time, 12, false, true);
    sbSimTime->setup(1e-6, 1e5, time, 6, false, true);
    sbStepLimit->setup(0.0, std::numeric_limits<double>::max(), none, 12, false, true);
    fbWriteEvery->setup(1e-12, 1e6, time, 6, false, true);
    sbGridSizeM->setup(1e-12, 1e12, none, 12, false, true);
    m_dynamicDomainCheckInterval->setup(1e-12, 1e12, none, 12, false, true);
    m_dynamicDomainParticleDisplacement->setup(1e-12, 1e12, none, 12, false, true);
    sbNumProcs->setup(1, std::numeric_limits<int>::max(), none);
    m_dynamicDomainNumberOfChecks->setup(0, 99, none);
    sbGridSizeM->setValue(2.5);
}

// Setting a field up gives it the suffix of its unit, which isn't what these three count in.
void CProcessingOptionsFrame::setSuffixes()
{
    sbGridSizeM->setSuffix(tr(" R min"));
    m_dynamicDomainCheckInterval->setSuffix(tr(" s"));
    m_dynamicDomainParticleDisplacement->setSuffix(tr(" % of R min"));
}

void CProcessingOptionsFrame::onPageEntered()
{
    const std::vector<CCreatorData>& decks = CDeckStore::instance()->creatorData();
    if (decks.empty()) {
        return;
    }
    if (!(m_lastDeck == decks.front())) {
        readDeckSettings();
    }
    applyAllRules();
}

void CProcessingOptionsFrame::readDeckSettings()
{
    if (CAppSettings::instance()->deckFormat() < NEWER_ARGUMENTS_FORMAT) {
        m_chkCompressData->hide();
        m_chkSinglePrecisionContactDetection->hide();
        m_chkAlternativeContactDetection->hide();
    }
    m_dfgReader->read(m_dfgValues, SimulatorOptions::IgnoredSections);
    applyDfgValues();
    enableGpuGroups(m_cbSimulatorEngine->currentIndex());
    enterArguments();
}

void CProcessingOptionsFrame::applyDfgValues()
{
    for (const auto& [key, value] : m_dfgValues) {
        const auto widget = m_widgetForKey.find(key);
        if (widget != m_widgetForKey.end() && widget->second != nullptr) {
            apply(key, value, widget->second);
        }
    }
}

void CProcessingOptionsFrame::enterArguments()
{
    using namespace SimulatorOptions;
    CSimulatorArguments& table = m_simulatorArguments;
    const std::string deviceIndex = leDeviceIndex->text().toStdString();
    table.enter(TotalTimeFlag, number(sbSimTime->value()));
    table.enter(SaveIntervalFlag, number(fbWriteEvery->value()));
    table.enter(CellSizeFlag, number(sbGridSizeM->value()));
    table.enter(TimeStepFlag, number(chkAutoTimeStep->isChecked() ? 0.0 : sbFixedTime->value()));
    table.enter(CoresFlag, number(sbNumProcs->value()));
    table.enter(EngineFlag, number(m_cbSimulatorEngine->currentIndex()));
    table.enter(DeviceIndexFlag, valueIf(!deviceIndex.empty(), deviceIndex));
    table.enter(RewindFlag, flagAlone(cbRewind->isChecked()));
    table.enter(RecalculateFlag, flagAlone(cbRecalculate->isChecked()));
    table.enter(StepLimitFlag, stepLimit(chkStepLimit->isChecked()));
    table.enter(DynamicDomainFlag, oneOrZero(gbDynamicDomain->isChecked()));
    table.enter(CheckIntervalFlag, number(m_dynamicDomainCheckInterval->value()));
    table.enter(NumberOfChecksFlag, number(m_dynamicDomainNumberOfChecks->value()));
    table.enter(DisplacementFlag, number(m_dynamicDomainParticleDisplacement->value()));
    table.enter(GpuSplitFlag, valueIf(chkGPUSplit->isChecked(), splitAxis()));
    table.enter(SimExportFlag, flagAlone(m_chkSimExport->isChecked()));
    table.enter(CouplingServerFlag, flagAlone(gbCouplingServer->isChecked()));
    table.enter(AutoGridFlag, flagAlone(m_chkAutoGridResizing->isChecked()));
    table.enter(ConnectionCleanUpFlag, flagAlone(m_chkConnectionCleanUp->isChecked()));
    if (CAppSettings::instance()->deckFormat() >= NEWER_ARGUMENTS_FORMAT) {
        table.enter(CompressDataFlag, oneOrZero(m_chkCompressData->isChecked()));
        table.enter(SinglePrecisionFlag, Disabled);
        table.enter(AlternativeDetectionFlag, Disabled);
    }
}

void CProcessingOptionsFrame::applyAllRules()
{
    setSimulatorArgument(SimulatorOptions::EngineFlag, number(m_cbSimulatorEngine->currentIndex()));
    showAutoTimeStep(chkAutoTimeStep->isChecked());
    showStepLimit(chkStepLimit->isChecked());
    setSimulatorArgument(SimulatorOptions::CellSizeFlag, number(sbGridSizeM->value()));
    sbGridSizeM->setEnabled(!m_chkAutoGridResizing->isChecked());
    showDynamicDomain(gbDynamicDomain->isChecked());
    showGpuSplit(chkGPUSplit->isChecked());
    showCoupling(gbCouplingServer->isChecked(), leCouplingCommand->text());
    storeOptions();
}

void CProcessingOptionsFrame::setSimulatorArgument(const std::string& flag,
                                                   const std::string& value)
{
    m_simulatorArguments.set(flag, value);
    storeOptions();
}

void CProcessingOptionsFrame::storeOptions() const
{
    CDeckStore::instance()->setSimulatorOptions(m_simulatorArguments.optionString());
}
