#include "tests/road/wizard_journey.h"

#include "samples/deck_maker.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QGroupBox>
#include <QListWidget>
#include <QTest>

namespace {

void fillParticleModels(ParticleModels& models)
{
    models.hertzMindlinJkr = {{{"glass", "glass"}, {0.05}}};
    models.hystereticInteractions = {{{"glass", "glass"}, {0.000123456789, 1234567.0}}};
    models.hystereticYields = {{{"rubber"}, {100000.0}}, {{"glass"}, {2000000.0}}};
    models.edinburghAdhesion = {
        {{"glass", "glass"}, {-0.002, 0.30000000000000004, 0.9, 1.5, 2.25, 0.6666666666}}};
    models.typeCRollingFriction = TypeCRollingFriction{0.2, 0.3, true, true};
    models.bonding =
        BondingModel{{{{{"glass<>glass"}, {1e7, 2e7, 3e6, 4e6, 0.0015}}}}, {}, 0.125, true};
    models.heatConduction = {{{"glass"}, {0.8}}};
    models.linearCohesionV2 = {{{"glass", "glass"}, {12.5}}};
}

void fillGeometryModels(GeometryModels& models)
{
    models.hertzMindlinJkrV2 = {{{"glass", "steel"}, {0.07}}};
    models.linearSpring = {{{"glass", "steel"}, {1.5}}};
    models.standardRollingFriction = true;
    models.heatConductionParticle = {{{"glass"}, {0.9}}};
    models.heatConductionGeometry = {{{"wall"}, {45.0, 293.15}}};
    models.archardWear = {{{"glass", "steel"}, {1e-12}}};
}

/// Of format 5, its rows not in the order of their keys.
DeckDescription bed()
{
    DeckDescription deck;
    deck.revision = 31638;
    deck.opaqueText = "deck\n";
    deck.companionText = "companion\n";
    deck.interactions = {{{"glass<>steel"}, {0.5, 0.4, 0.01}},
                         {{"glass<>glass"}, {0.75, 0.25, 0.02}}};
    fillParticleModels(deck.surfaceSurface);
    fillGeometryModels(deck.surfaceGeometry);
    deck.forces["Ganser Drag"] = {1.2, 2.5, 1.8e-05, {1.0, -2.0, 0.5}, 1.0, {}};
    deck.forces["Ganser Drag"].shapeFactors = {{"sphere", 1.0}, {"chip", 0.6}};
    deck.forces["Magnus Lift"] = {1000.0, 3.0, 0.001, {4.0, 5.0, 6.0}, 0.0, {}};
    deck.temperatureUpdate = {{{"glass"}, {840.0}}};
    return deck;
}

const char* const Settings = "!format=KEYPATHVALUE\n"
                             "!format-version=1.0.0.0\n"
                             "PROCESSOR:GENERAL:AUTO TIMESTEP=BOOLEAN:TRUE\n"
                             "PROCESSOR:GENERAL:NUM THREADS=INT:4\n"
                             "PROCESSOR:WRITE:TOTAL=DOUBLE:2.5\n"
                             "PROCESSOR:WRITE:INTERVAL=DOUBLE:0.125\n"
                             "PROCESSOR:WRITE:COMPRESS DATA=BOOLEAN:TRUE\n";

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s can't be written", qPrintable(path));
    }
}

QString digest(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("unreadable");
    }
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex();
}

} // namespace

CWizardJourney::CWizardJourney(Analysis analysis)
    : m_analysis(analysis)
    , m_hand(m_window)
{
    makeSources();
}

QString CWizardJourney::path(const QString& name) const
{
    return m_root.filePath(name);
}

void CWizardJourney::makeSources() const
{
    for (const char* folder : {"deck", "more", "jobs", "a bin"}) {
        QDir().mkpath(path(QLatin1String(folder)));
    }
    writeDeck(bed(), path(QStringLiteral("deck")).toStdString(), "bed");
    write(path(QStringLiteral("deck/bed.dfg")), Settings);
    write(path(QStringLiteral("deck/bed.qsv")), "queries\n");
    write(path(QStringLiteral("deck/bed_data/1.h5")), "time step\n");
    write(path(QStringLiteral("more/notes.txt")), "notes\r\n");
    write(path(QStringLiteral("more/data.bin")), QByteArray("\0\n\r\xff", 4));
    write(path(QStringLiteral("more/analyse.py")), "print()\n");
    write(path(QStringLiteral("more/server.exe")), "server\n");
    write(path(QStringLiteral("a bin/orva.exe")), "simulator\n");
}

void CWizardJourney::go()
{
    m_window.show();
    if (!QTest::qWaitForWindowExposed(&m_window)) {
        qFatal("The window doesn't appear");
    }
    loadDeck();
    vary();
    chooseAnalysis();
    setOptions();
    generate();
}

void CWizardJourney::loadDeck()
{
    m_hand.type(QStringLiteral("m_leDeckFilePath"), path(QStringLiteral("deck/bed.zek")));
    m_hand.type(QStringLiteral("m_leAdditionalFilesPath"),
                path(QStringLiteral("more/notes.txt")) + QLatin1Char(';') +
                    path(QStringLiteral("more/data.bin")));
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CWizardJourney::vary()
{
    const QString add = QStringLiteral("m_pbAdd");
    m_hand.chooseProperty({QStringLiteral("Interactions")});
    m_hand.chooseRow(QStringLiteral("m_materialListWidget"), QStringLiteral("glass<>steel"));
    m_hand.chooseRow(QStringLiteral("m_parameterListWidget"), QStringLiteral("Restitution"));
    m_hand.click(add);
    m_hand.typeValue(1, QStringLiteral("0.9"));
    m_hand.chooseProperty({QStringLiteral("Contact Models"), QStringLiteral("Particle to Particle"),
                           QStringLiteral("Hertz-Mindlin with JKR")});
    m_hand.chooseRow(QStringLiteral("m_materialListWidget"), QStringLiteral("glass<>glass"));
    m_hand.chooseRow(QStringLiteral("m_parameterListWidget"), QStringLiteral("Surface Energy"));
    m_hand.click(add);
    m_hand.typeValue(1, QStringLiteral("1234567"));
    m_hand.click(add);
    m_hand.typeValue(2, QStringLiteral("0.000125"));
    m_cases = m_hand.textOf(QStringLiteral("m_lblGeneratedCasesNo"));
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CWizardJourney::chooseAnalysis()
{
    if (m_analysis == Analysis::Export) {
        m_hand.click(QStringLiteral("m_rbPostProcessingORVA"));
    } else if (m_analysis == Analysis::Python) {
        m_hand.click(QStringLiteral("m_rbPythonPostProcessing"));
        m_hand.type(QStringLiteral("m_lePythonLocation"), path(QStringLiteral("more/analyse.py")));
        m_hand.type(QStringLiteral("m_lePythonAdditionalFlags"), QStringLiteral("--verbose 3"));
    }
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CWizardJourney::setOptions()
{
    m_hand.type(QStringLiteral("leDeviceIndex"), QStringLiteral("0 1"));
    m_hand.click(QStringLiteral("cbRewind"));
    QTest::keyClick(m_hand.find<QGroupBox>(QStringLiteral("gbDynamicDomain")), Qt::Key_Space);
    m_hand.type(QStringLiteral("m_dynamicDomainCheckInterval"), QStringLiteral("0.25"));
    m_hand.type(QStringLiteral("m_dynamicDomainNumberOfChecks"), QStringLiteral("3"));
    m_hand.type(QStringLiteral("m_dynamicDomainParticleDisplacement"), QStringLiteral("7.5"));
    if (m_analysis == Analysis::Export) {
        setCoupling();
    }
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CWizardJourney::setCoupling()
{
    QTest::keyClick(m_hand.find<QGroupBox>(QStringLiteral("gbCouplingServer")), Qt::Key_Space);
    m_dialogs.answerNextFileDialog({path(QStringLiteral("more/server.exe"))});
    m_hand.click(QStringLiteral("m_pbCouplingLocationSelect"));
    m_hand.type(QStringLiteral("leCouplingCommand"), QStringLiteral("--port 1"));
}

void CWizardJourney::generate()
{
    m_dialogs.answerNextFileDialog({path(QStringLiteral("a bin/orva.exe"))});
    m_hand.click(QStringLiteral("m_pbORVAExeLocationSelect"));
    m_hand.type(QStringLiteral("m_leJobSaveLocation"), path(QStringLiteral("jobs")));
    m_hand.click(QStringLiteral("m_pbGenerateJob"));
    m_hand.click(QStringLiteral("m_rbSimulationDistributed"));
    m_hand.click(QStringLiteral("m_pbGenerateDistributedFiles"));
}

QStringList CWizardJourney::rows() const
{
    const auto* list = m_hand.find<QListWidget>(QStringLiteral("m_listOngoingSimulations"));
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        texts << list->item(row)->text();
    }
    return texts;
}

QStringList CWizardJourney::sources() const
{
    QStringList lines;
    for (const char* folder : {"deck", "more", "a bin"}) {
        QDirIterator files(path(QLatin1String(folder)), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString name = files.next();
            const QString time = files.fileInfo().lastModified().toString(Qt::ISODateWithMs);
            lines << name + QLatin1Char(' ') + time + QLatin1Char(' ') + digest(name);
        }
    }
    lines.sort();
    return lines;
}
