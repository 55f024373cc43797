#pragma once

#include "tests/setup/options_page.h"

#include <QMap>
#include <QPair>

/// Which widgets the options page is to enable and what coupling it is to store after each step of
/// a user, kept by the rules alone. The widgets are asked for what they hold, and for nothing else.
class CExpectedPage
{
public:
    explicit CExpectedPage(const COptionsPage& page)
        : m_page(page)
    {
    }

    /// A widget has got another state, index, number or text.
    void change(const QString& name)
    {
        if (name == QLatin1String("leCouplingCommand")) {
            coupling = {text("m_leCouplingLocation"), " " + text("leCouplingCommand")};
        } else if (name == QLatin1String("gbCouplingServer")) {
            couple(" " + text("leCouplingCommand"));
        } else if (name == QLatin1String("m_cbSimulatorEngine")) {
            followEngine();
        } else if (name == QLatin1String("m_chkAlternativeContactDetection")) {
            enabled["m_chkSinglePrecisionContactDetection"] = isOn(name);
        } else {
            followSwitch(name);
        }
    }

    /// The page is entered with a deck; the file beside it has been read already.
    void enter()
    {
        followEngine();
        for (const char* name : {"chkAutoTimeStep", "chkStepLimit", "m_chkAutoGridResizing",
                                 "gbDynamicDomain", "chkGPUSplit"}) {
            followSwitch(name);
        }
        couple(text("leCouplingCommand"));
    }

    QPair<QString, QString> coupling;
    QMap<QString, bool> enabled; ///< of the widgets that the rules have reached

private:
    bool isOn(const QString& name) const
    {
        return m_page.child<>(name).property("checked").toBool();
    }
    QString text(const char* name) const { return m_page.child<QLineEdit>(name).text(); }

    void followEngine()
    {
        const bool gpu = m_page.child<QComboBox>("m_cbSimulatorEngine").currentIndex() == 1;
        enabled["chkGPUSplit"] = enabled["m_chkAlternativeContactDetection"] = gpu;
    }

    void followSwitch(const QString& name)
    {
        static const QMap<QString, QStringList> DISABLED_BY{
            {"chkAutoTimeStep", {"sbFixedTime", "lblFixedTS"}},
            {"m_chkAutoGridResizing", {"sbGridSizeM"}}};
        static const QMap<QString, QStringList> ENABLED_BY{
            {"chkStepLimit", {"sbStepLimit"}},
            {"chkGPUSplit", {"m_cbGPUSplitAxis", "m_lblGPUSplitAxis"}},
            {"gbDynamicDomain",
             {"m_dynamicDomainCheckInterval", "m_dynamicDomainNumberOfChecks",
              "m_dynamicDomainParticleDisplacement", "m_lblTau", "m_lblPsi", "m_lblRadiusCoef"}}};
        for (const QString& member : DISABLED_BY.value(name)) {
            enabled[member] = !isOn(name);
        }
        for (const QString& member : ENABLED_BY.value(name)) {
            enabled[member] = isOn(name);
        }
    }

    void couple(const QString& command)
    {
        const bool on = isOn("gbCouplingServer");
        coupling =
            on ? qMakePair(text("m_leCouplingLocation"), command) : qMakePair(QString(), QString());
        enabled["leCouplingCommand"] = enabled["m_lblCouplingCommand"] = on;
    }

    const COptionsPage& m_page;
};
