#pragma once

#include "app/connections.h"
#include "app/frame.h"
#include "deck/creator_data.h"
#include "setup/dfg_input_output.h"
#include "setup/simulator_arguments.h"
#include "ui_processing_options_frame.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

/// Page 3: the solver settings of every case. They start from the .dfg file beside the deck; each
/// change renews the simulator's option string and the coupling pair in the store.
class CProcessingOptionsFrame : public IFrame, private Ui::ProcessingOptionsFrameUI
{
    Q_OBJECT

public:
    explicit CProcessingOptionsFrame(QWidget* parent = nullptr);
    ~CProcessingOptionsFrame() override;

    /// Puts the values of the deck's .dfg file back into their widgets. Does nothing without a
    /// deck. Lets pass what reading the file throws, and std::bad_any_cast where a value isn't of
    /// the type that its widget takes.
    void onPageEntered() override;

    /// Replaces the value of an argument that was entered before, and renews the option string in
    /// any case.
    void setSimulatorArgument(const std::string& flag, const std::string& value);

private:
    using Connections = std::vector<QMetaObject::Connection>;

    void fillChoices();
    void mapKeys();
    void setupNumbers();
    void setSuffixes();

    void setupConnections();
    void connectNumbers(Connections& connections);
    void connectTexts(Connections& connections);
    void connectSwitches(Connections& connections);
    void connectGroups(Connections& connections);
    void connectCoupling(Connections& connections);

    void readDeckSettings();
    void applyDfgValues();
    void enterArguments();
    void applyAllRules();
    void storeOptions() const;

    std::string stepLimit(bool limited) const;
    std::string splitAxis() const;

    // Each follows one switch: the argument's value, and which widgets are enabled.
    void showAutoTimeStep(bool automatic);
    void showStepLimit(bool limited);
    void showDynamicDomain(bool on);
    void showGpuSplit(bool on);
    void onEngineChanged(int index);
    void enableGpuGroups(int engine);
    void onAlternativeDetectionToggled(bool on);

    /// Stores the pair of the location and `command`, or two empty texts.
    void showCoupling(bool on, const QString& command);
    void storeCoupling(const QString& command) const;
    void browseForCouplingServer();

    static CConnectionTable<CProcessingOptionsFrame> s_connections;

    CCreatorData m_lastDeck;
    std::map<std::string, QWidget*> m_widgetForKey;
    DfgValues m_dfgValues;
    CSimulatorArguments m_simulatorArguments;
    std::shared_ptr<CDFGInputOutput> m_dfgReader;
};
