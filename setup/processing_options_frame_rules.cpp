#include "setup/processing_options_frame.h"

#include "app/constants/file_names.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "platform/executable_filter.h"
#include "setup/simulator_options.h"

#include <QFileDialog>

namespace {

using namespace SimulatorValue;

/// The one engine that splits its domain and offers a choice of contact detection.
constexpr int GPU_ENGINE = 1;

QString behindBlank(const QString& text)
{
    return QLatin1Char(' ') + text;
}

} // namespace

void CProcessingOptionsFrame::setupConnections()
{
    Connections connections;
    connectNumbers(connections);
    connectTexts(connections);
    connectSwitches(connections);
    connectGroups(connections);
    connectCoupling(connections);
    s_connections.store(this, std::move(connections));
}

void CProcessingOptionsFrame::connectNumbers(Connections& connections)
{
    using namespace SimulatorOptions;
    const auto feed = [&](auto* box, auto signal, const std::string& flag) {
        connections.push_back(connect(box, signal, this, [this, flag](auto value) {
            setSimulatorArgument(flag, number(value));
        }));
    };
    const auto ofDouble = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    const auto ofInt = QOverload<int>::of(&QSpinBox::valueChanged);
    feed(sbSimTime, ofDouble, TotalTimeFlag);
    feed(fbWriteEvery, ofDouble, SaveIntervalFlag);
    feed(sbGridSizeM, ofDouble, CellSizeFlag);
    feed(sbFixedTime, ofDouble, TimeStepFlag);
    feed(sbStepLimit, ofDouble, StepLimitFlag);
    feed(m_dynamicDomainCheckInterval, ofDouble, CheckIntervalFlag);
    feed(m_dynamicDomainParticleDisplacement, ofDouble, DisplacementFlag);
    feed(sbNumProcs, ofInt, CoresFlag);
    feed(m_dynamicDomainNumberOfChecks, ofInt, NumberOfChecksFlag);
}

void CProcessingOptionsFrame::connectTexts(Connections& connections)
{
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connections.push_back(
        connect(leDeviceIndex, &QLineEdit::textChanged, this, [this](const QString& text) {
            setSimulatorArgument(SimulatorOptions::DeviceIndexFlag, text.toStdString());
        }));
    connections.push_back(connect(m_cbGPUSplitAxis, indexChanged, this, [this] {
        setSimulatorArgument(SimulatorOptions::GpuSplitFlag, splitAxis());
    }));
    connections.push_back(connect(m_cbSimulatorEngine, indexChanged, this,
                                  &CProcessingOptionsFrame::onEngineChanged));
}

void CProcessingOptionsFrame::connectSwitches(Connections& connections)
{
    using namespace SimulatorOptions;
    const auto feed = [&](QCheckBox* box, const std::string& flag, std::string (*text)(bool)) {
        connections.push_back(connect(box, &QCheckBox::toggled, this, [this, flag, text](bool on) {
            setSimulatorArgument(flag, text(on));
        }));
    };
    const auto follow = [&](QCheckBox* box, auto slot) {
        connections.push_back(connect(box, &QCheckBox::toggled, this, slot));
    };
    feed(cbRewind, RewindFlag, flagAlone);
    feed(cbRecalculate, RecalculateFlag, flagAlone);
    feed(m_chkSimExport, SimExportFlag, flagAlone);
    feed(m_chkConnectionCleanUp, ConnectionCleanUpFlag, flagAlone);
    feed(m_chkCompressData, CompressDataFlag, oneOrZero);
    feed(m_chkSinglePrecisionContactDetection, SinglePrecisionFlag, oneOrZero);
    feed(m_chkAutoGridResizing, AutoGridFlag, flagAlone);
    follow(m_chkAutoGridResizing, [this](bool on) { sbGridSizeM->setEnabled(!on); });
    follow(chkAutoTimeStep, &CProcessingOptionsFrame::showAutoTimeStep);
    follow(chkStepLimit, &CProcessingOptionsFrame::showStepLimit);
    follow(m_chkSimulationOutputs,
           [](bool on) { CDeckStore::instance()->setSimulationOutputs(on); });
}

void CProcessingOptionsFrame::connectGroups(Connections& connections)
{
    const auto follow = [&](QGroupBox* group, auto slot) {
        connections.push_back(connect(group, &QGroupBox::toggled, this, slot));
    };
    follow(gbDynamicDomain, [this](bool on) {
        setSimulatorArgument(SimulatorOptions::DynamicDomainFlag, oneOrZero(on));
    });
    follow(gbDynamicDomain, &CProcessingOptionsFrame::showDynamicDomain);
    follow(chkGPUSplit, &CProcessingOptionsFrame::showGpuSplit);
    follow(m_chkAlternativeContactDetection,
           &CProcessingOptionsFrame::onAlternativeDetectionToggled);
    follow(gbCouplingServer, [this](bool on) {
        setSimulatorArgument(SimulatorOptions::CouplingServerFlag, flagAlone(on));
    });
    follow(gbCouplingServer,
           [this](bool on) { showCoupling(on, behindBlank(leCouplingCommand->text())); });
}

void CProcessingOptionsFrame::connectCoupling(Connections& connections)
{
    connections.push_back(
        connect(leCouplingCommand, &QLineEdit::textChanged, this,
                [this](const QString& text) { storeCoupling(behindBlank(text)); }));
    connections.push_back(connect(m_pbCouplingLocationSelect, &QPushButton::clicked, this,
                                  &CProcessingOptionsFrame::browseForCouplingServer));
}

std::string CProcessingOptionsFrame::stepLimit(bool limited) const
{
    return valueIf(limited, number(sbStepLimit->value()));
}

std::string CProcessingOptionsFrame::splitAxis() const
{
    return m_cbGPUSplitAxis->currentText().toStdString();
}

void CProcessingOptionsFrame::showAutoTimeStep(bool automatic)
{
    setSimulatorArgument(SimulatorOptions::TimeStepFlag, automatic
                                                             ? SimulatorOptions::AutomaticTimeStep
                                                             : number(sbFixedTime->value()));
    sbFixedTime->setEnabled(!automatic);
    lblFixedTS->setEnabled(!automatic);
}

void CProcessingOptionsFrame::showStepLimit(bool limited)
{
    setSimulatorArgument(SimulatorOptions::StepLimitFlag, stepLimit(limited));
    sbStepLimit->setEnabled(limited);
}

void CProcessingOptionsFrame::showDynamicDomain(bool on)
{
    using namespace SimulatorOptions;
    setSimulatorArgument(CheckIntervalFlag,
                         valueIf(on, number(m_dynamicDomainCheckInterval->value())));
    setSimulatorArgument(NumberOfChecksFlag,
                         valueIf(on, number(m_dynamicDomainNumberOfChecks->value())));
    setSimulatorArgument(DisplacementFlag,
                         valueIf(on, number(m_dynamicDomainParticleDisplacement->value())));
    const std::initializer_list<QWidget*> members{m_dynamicDomainCheckInterval,
                                                  m_dynamicDomainNumberOfChecks,
                                                  m_dynamicDomainParticleDisplacement,
                                                  m_lblTau,
                                                  m_lblPsi,
                                                  m_lblRadiusCoef};
    for (QWidget* member : members) {
        member->setEnabled(on);
    }
}

void CProcessingOptionsFrame::showGpuSplit(bool on)
{
    setSimulatorArgument(SimulatorOptions::GpuSplitFlag, valueIf(on, splitAxis()));
    m_cbGPUSplitAxis->setEnabled(on);
    m_lblGPUSplitAxis->setEnabled(on);
}

void CProcessingOptionsFrame::onEngineChanged(int index)
{
    const bool gpu = index == GPU_ENGINE;
    setSimulatorArgument(SimulatorOptions::EngineFlag, number(index));
    // The axis alone decides here, whether or not the split is asked for.
    setSimulatorArgument(SimulatorOptions::GpuSplitFlag, valueIf(gpu, splitAxis()));
    setSimulatorArgument(SimulatorOptions::AlternativeDetectionFlag,
                         oneOrZero(gpu && m_chkAlternativeContactDetection->isChecked()));
    setSimulatorArgument(SimulatorOptions::SinglePrecisionFlag,
                         oneOrZero(gpu && m_chkSinglePrecisionContactDetection->isChecked()));
    enableGpuGroups(index);
}

void CProcessingOptionsFrame::enableGpuGroups(int engine)
{
    chkGPUSplit->setEnabled(engine == GPU_ENGINE);
    m_chkAlternativeContactDetection->setEnabled(engine == GPU_ENGINE);
}

void CProcessingOptionsFrame::onAlternativeDetectionToggled(bool on)
{
    setSimulatorArgument(SimulatorOptions::AlternativeDetectionFlag, oneOrZero(on));
    setSimulatorArgument(SimulatorOptions::SinglePrecisionFlag,
                         oneOrZero(on && m_chkSinglePrecisionContactDetection->isChecked()));
    m_chkSinglePrecisionContactDetection->setEnabled(on);
}

void CProcessingOptionsFrame::showCoupling(bool on, const QString& command)
{
    if (on) {
        storeCoupling(command);
    } else {
        CDeckStore::instance()->setCoupling({});
    }
    leCouplingCommand->setEnabled(on);
    m_lblCouplingCommand->setEnabled(on);
}

void CProcessingOptionsFrame::storeCoupling(const QString& command) const
{
    CDeckStore::instance()->setCoupling(
        {m_leCouplingLocation->text().toStdString(), command.toStdString()});
}

void CProcessingOptionsFrame::browseForCouplingServer()
{
    const QString path = QFileDialog::getOpenFileName(
        this, FileNames::ChooseExecutable, CAppSettings::instance()->text(CAppSettings::RootPath),
        platform::executableFilter(FileNames::ExecutableFilter));
    if (!path.isEmpty()) {
        m_leCouplingLocation->setText(path);
        storeCoupling(leCouplingCommand->text());
    }
}
