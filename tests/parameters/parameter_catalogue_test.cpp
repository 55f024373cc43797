#include "parameters/parameter_catalogue.h"

#include "parameters/parameter_limits.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>
#include <QTranslator>

#include <limits>
#include <stdexcept>

Q_DECLARE_METATYPE(std::string*)

namespace Catalogue = ParameterCatalogue;
using Labels = std::vector<std::string>;

namespace {

constexpr double Max = std::numeric_limits<double>::max();

/// What the look-up of a label raises, empty for nothing.
std::string failureOf(const std::string& label)
{
    try {
        limitOf(label);
    } catch (const std::out_of_range& failure) {
        return failure.what();
    }
    return std::string();
}

/// Translates every text of one context into one word.
class CGroupTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* /*text*/, const char* /*comment*/,
                      int /*count*/) const override
    {
        return QLatin1String(context) == QLatin1String("GUI Parameters") ? QStringLiteral("Gruppe")
                                                                         : QString();
    }
};

} // namespace

class CParameterCatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void limitsHold41RowsAfterStartUp();
    void everyLabelHasItsKindAndBounds_data();
    void everyLabelHasItsKindAndBounds();
    void surfaceEnergyKeepsTheBoundsOfItsFirstRow();
    void labelsWithoutARowRaise_data();
    void labelsWithoutARowRaise();
    void theLabelOfTheActiveSpraysSucceeds();
    void theFirstShapeFactorLabelEndsInABlank();
    void sharedAndEmptyLabelsAreAsSettled();
    void labelListsStandInTheOrderOfTheDeckTuples();
    void fieldLabelsThatStandInNoList_data();
    void fieldLabelsThatStandInNoList();
    void treeGroups();
    void theTreeGroupsAloneAreTranslated();
    void treeLabels_data();
    void treeLabels();
    void secondInitialisationChangesNothing();
};

void CParameterCatalogueTest::initTestCase()
{
    Catalogue::initialise();
    initialiseParameterLimits();
}

void CParameterCatalogueTest::limitsHold41RowsAfterStartUp()
{
    QCOMPARE(ParameterLimits.size(), std::size_t(41));
}

void CParameterCatalogueTest::everyLabelHasItsKindAndBounds_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::newRow("Restitution") << 1 << double(0.0001) << double(1);
    QTest::newRow("Static Friction") << 1 << double(0) << double(1e+100);
    QTest::newRow("Rolling Friction") << 1 << double(0) << double(1e+100);
    QTest::newRow("Damping") << 1 << double(0) << double(Max);
    QTest::newRow("Stiffness") << 1 << double(0) << double(Max);
    QTest::newRow("Constant pull-off force") << 1 << double(-Max) << double(0);
    QTest::newRow("Surface Energy") << 1 << double(0) << double(Max);
    QTest::newRow("Contact Plasticity Ratio") << 1 << double(0) << double(1);
    QTest::newRow("Slope Exp") << 2 << double(1) << double(1.5);
    QTest::newRow("Tensile Exp") << 1 << double(1) << double(Max);
    QTest::newRow("Tangential Stiff Multiplier") << 1 << double(1e-06) << double(Max);
    QTest::newRow("Normal Stiffness per unit area") << 1 << double(0) << double(Max);
    QTest::newRow("Shear Stiffness per unit area") << 1 << double(0) << double(Max);
    QTest::newRow("Critical Normal Stress") << 1 << double(0) << double(Max);
    QTest::newRow("Critical Shear Stress") << 1 << double(0) << double(Max);
    QTest::newRow("Shear Strength") << 1 << double(0) << double(Max);
    QTest::newRow("Bonded Disk Radius") << 1 << double(0) << double(Max);
    QTest::newRow("Normal Range") << 1 << double(0) << double(Max);
    QTest::newRow("Normal Strength") << 1 << double(0) << double(Max);
    QTest::newRow("Tangential Stiffness") << 1 << double(0) << double(Max);
    QTest::newRow("Tangential Range") << 1 << double(0) << double(Max);
    QTest::newRow("Bonded Disk Scale") << 1 << double(0) << double(Max);
    QTest::newRow("Characteristic Velocity") << 1 << double(-Max) << double(Max);
    QTest::newRow("Yield Strength") << 1 << double(1e-24) << double(Max);
    QTest::newRow("Interfacial Surface energy") << 1 << double(-Max) << double(Max);
    QTest::newRow("Torque Feedback") << 0 << double(0) << double(1);
    QTest::newRow("Start Time") << 1 << double(0) << double(Max);
    QTest::newRow("Thermal Conductivity") << 1 << double(0) << double(Max);
    QTest::newRow("Geometry Temperature") << 1 << double(0) << double(Max);
    QTest::newRow("Active Sprays") << 1 << double(-Max) << double(Max);
    QTest::newRow("Enable Rolling Friction") << 0 << double(0) << double(1);
    QTest::newRow("Wear Constant") << 1 << double(-Max) << double(Max);
    QTest::newRow("Heat Capacity") << 1 << double(0) << double(Max);
    QTest::newRow("Density") << 1 << double(1e-08) << double(Max);
    QTest::newRow("Viscosity") << 1 << double(1e-08) << double(Max);
    QTest::newRow("Spherocity") << 1 << double(1e-06) << double(Max);
    QTest::newRow("Scale") << 1 << double(1e-06) << double(Max);
    QTest::newRow("Steady Velocity Flow X") << 1 << double(-Max) << double(Max);
    QTest::newRow("Steady Velocity Flow Y") << 1 << double(-Max) << double(Max);
    QTest::newRow("Steady Velocity Flow Z") << 1 << double(-Max) << double(Max);
    QTest::newRow("Using Steady Velocity Flow") << 0 << double(0) << double(1);
}

void CParameterCatalogueTest::everyLabelHasItsKindAndBounds()
{
    QFETCH(int, kind);
    QFETCH(double, first);
    QFETCH(double, second);
    QCOMPARE(failureOf(QTest::currentDataTag()), std::string());
    const ParameterLimit& limit = limitOf(QTest::currentDataTag());
    QCOMPARE(limit.kind, kind);
    QVERIFY(limit.values == std::vector<double>({first, second}));
}

void CParameterCatalogueTest::surfaceEnergyKeepsTheBoundsOfItsFirstRow()
{
    const ParameterLimit& limit = limitOf("Surface Energy");
    QCOMPARE(limit.values.at(0), 0.0);
    QCOMPARE(limit.values.at(1), Max);
}

void CParameterCatalogueTest::labelsWithoutARowRaise_data()
{
    QTest::addColumn<QString>("label");
    for (const char* label :
         {"Energy Density", "Vickers Hardness", "Scaling Factor", "Enable Deformation", ""}) {
        QTest::addRow("'%s'", label) << QString::fromLatin1(label);
    }
}

void CParameterCatalogueTest::labelsWithoutARowRaise()
{
    QFETCH(QString, label);
    QCOMPARE(failureOf(label.toStdString()), std::string("invalid map<K, T> key"));
}

void CParameterCatalogueTest::theLabelOfTheActiveSpraysSucceeds()
{
    QCOMPARE(failureOf("Active Sprays"), std::string());
}

void CParameterCatalogueTest::theFirstShapeFactorLabelEndsInABlank()
{
    QCOMPARE(Catalogue::GanserDragParticle.size(), std::size_t(21));
    QCOMPARE(Catalogue::GanserDragParticle.back(), ' ');
    QCOMPARE(Catalogue::HaiderLevenspielDragParticle,
             std::string("Haider and Levenspiel Drag Particle "));
}

void CParameterCatalogueTest::sharedAndEmptyLabelsAreAsSettled()
{
    QCOMPARE(Catalogue::LinearCohesion, std::string("Spray Coating"));
    QCOMPARE(Catalogue::SprayCoating, std::string());
    QCOMPARE(Catalogue::OkaWear, std::string());
    QCOMPARE(Catalogue::EnergyDensity, std::string("Active Sprays"));
    QCOMPARE(Catalogue::ActiveSprays, std::string());
}

void CParameterCatalogueTest::labelListsStandInTheOrderOfTheDeckTuples()
{
    QVERIFY(Catalogue::InteractionParameters ==
            Labels({"Restitution", "Static Friction", "Rolling Friction"}));
    QVERIFY(Catalogue::HystereticParameters == Labels({"Damping", "Stiffness"}));
    QVERIFY(Catalogue::EdinburghParameters ==
            Labels({"Constant pull-off force", "Surface Energy", "Contact Plasticity Ratio",
                    "Slope Exp", "Tensile Exp", "Tangential Stiff Multiplier"}));
    QVERIFY(Catalogue::BondingParameters ==
            Labels({"Normal Stiffness per unit area", "Shear Stiffness per unit area",
                    "Critical Normal Stress", "Critical Shear Stress", "Bonded Disk Radius"}));
    QVERIFY(Catalogue::BondingV2Parameters ==
            Labels({"Normal Stiffness per unit area", "Normal Range", "Tangential Stiffness",
                    "Tangential Range", "Normal Strength", "Shear Strength", "Bonded Disk Scale"}));
    QVERIFY(Catalogue::OkaWearParameters ==
            Labels({"Wear Constant", "Vickers Hardness", "Scaling Factor"}));
    QVERIFY(Catalogue::SteadyFlowParameters ==
            Labels({"Steady Velocity Flow X", "Steady Velocity Flow Y", "Steady Velocity Flow Z"}));
    QVERIFY(Catalogue::FlowFieldParameters ==
            Labels({"Density", "Viscosity", "Scale", "Using Steady Velocity Flow"}));
}

void CParameterCatalogueTest::treeGroups()
{
    QCOMPARE(Catalogue::ContactModels, QStringLiteral("Contact Models"));
    QCOMPARE(Catalogue::ParticleToParticle, QStringLiteral("Particle to Particle"));
    QCOMPARE(Catalogue::ParticleToGeometry, QStringLiteral("Particle to Geometry"));
    QCOMPARE(Catalogue::ParticleBodyForce, QStringLiteral("Particle Body Force"));
}

void CParameterCatalogueTest::theTreeGroupsAloneAreTranslated()
{
    CGroupTranslator translator;
    QCoreApplication::installTranslator(&translator);
    Catalogue::initialise();
    const QStringList groups = {Catalogue::ContactModels, Catalogue::ParticleToParticle,
                                Catalogue::ParticleToGeometry, Catalogue::ParticleBodyForce};
    const std::string model = Catalogue::Interactions;
    const std::string field = Catalogue::Restitution;
    QCoreApplication::removeTranslator(&translator);
    Catalogue::initialise();
    QCOMPARE(groups.count(QStringLiteral("Gruppe")), 4);
    QCOMPARE(model, std::string("Interactions"));
    QCOMPARE(field, std::string("Restitution"));
}

void CParameterCatalogueTest::fieldLabelsThatStandInNoList_data()
{
    QTest::addColumn<std::string*>("label");
    QTest::newRow("Surface Energy") << &Catalogue::SurfaceEnergy;
    QTest::newRow("Characteristic Velocity") << &Catalogue::CharacteristicVelocity;
    QTest::newRow("Yield Strength") << &Catalogue::YieldStrength;
    QTest::newRow("Interfacial Surface energy") << &Catalogue::InterfacialSurfaceEnergy;
    QTest::newRow("Torque Feedback") << &Catalogue::TorqueFeedback;
    QTest::newRow("Start Time") << &Catalogue::StartTime;
    QTest::newRow("Thermal Conductivity") << &Catalogue::ThermalConductivity;
    QTest::newRow("Geometry Temperature") << &Catalogue::GeometryTemperature;
    QTest::newRow("Enable Rolling Friction") << &Catalogue::EnableRollingFriction;
    QTest::newRow("Enable Deformation") << &Catalogue::EnableDeformation;
    QTest::newRow("Wear Constant") << &Catalogue::WearConstant;
    QTest::newRow("Heat Capacity") << &Catalogue::HeatCapacity;
    QTest::newRow("Spherocity") << &Catalogue::Spherocity;
}

void CParameterCatalogueTest::fieldLabelsThatStandInNoList()
{
    QFETCH(std::string*, label);
    QCOMPARE(*label, std::string(QTest::currentDataTag()));
}

void CParameterCatalogueTest::treeLabels_data()
{
    QTest::addColumn<std::string*>("label");
    QTest::addColumn<QString>("text");
    QTest::newRow("Interactions") << &Catalogue::Interactions << "Interactions";
    QTest::newRow("Yields") << &Catalogue::Yields << "Yields";
    QTest::newRow("HertzMindlinJkr") << &Catalogue::HertzMindlinJkr << "Hertz-Mindlin with JKR";
    QTest::newRow("HertzMindlinJkrV2")
        << &Catalogue::HertzMindlinJkrV2 << "Hertz-Mindlin with JKR V2";
    QTest::newRow("LinearSpring") << &Catalogue::LinearSpring << "Linear Spring";
    QTest::newRow("HystereticSpring") << &Catalogue::HystereticSpring << "Hysteretic Spring";
    QTest::newRow("EdinburghAdhesion")
        << &Catalogue::EdinburghAdhesion << "Edinburgh Elasto-Plastic Adhesion";
    QTest::newRow("Bonding") << &Catalogue::Bonding << "Bonding";
    QTest::newRow("BondingV2") << &Catalogue::BondingV2 << "Bonding V2";
    QTest::newRow("BondingStartTime") << &Catalogue::BondingStartTime << "Bonding Start Time";
    QTest::newRow("BondingTorqueFeedback")
        << &Catalogue::BondingTorqueFeedback << "Bonding Torque Feedback";
    QTest::newRow("HeatConduction") << &Catalogue::HeatConduction << "Heat Conduction";
    QTest::newRow("LinearCohesion") << &Catalogue::LinearCohesion << "Spray Coating";
    QTest::newRow("StandardRollingFriction")
        << &Catalogue::StandardRollingFriction << "Rolling friction";
    QTest::newRow("ArchardWear") << &Catalogue::ArchardWear << "Archard Wear";
    QTest::newRow("TemperatureUpdate") << &Catalogue::TemperatureUpdate << "Temperature Update";
    QTest::newRow("GanserDrag") << &Catalogue::GanserDrag << "Ganser Drag";
    QTest::newRow("HaiderLevenspielDrag")
        << &Catalogue::HaiderLevenspielDrag << "Haider and Levenspiel Drag";
    QTest::newRow("MagnusLift") << &Catalogue::MagnusLift << "Magnus Lift";
    QTest::newRow("MorsiAlexanderDrag")
        << &Catalogue::MorsiAlexanderDrag << "Morsi and Alexander Drag";
    QTest::newRow("SaffmanLift") << &Catalogue::SaffmanLift << "Saffman Lift";
    QTest::newRow("SchillerNaumannDrag")
        << &Catalogue::SchillerNaumannDrag << "Schiller and Naumann Drag";
    QTest::newRow("GanserDragParticle")
        << &Catalogue::GanserDragParticle << "Ganser Drag Particle ";
    QTest::newRow("HaiderLevenspielDragParticle")
        << &Catalogue::HaiderLevenspielDragParticle << "Haider and Levenspiel Drag Particle ";
    QTest::newRow("SimulatorOptions") << &Catalogue::SimulatorOptions << "Simulator Options";
}

void CParameterCatalogueTest::treeLabels()
{
    QFETCH(std::string*, label);
    QFETCH(QString, text);
    QCOMPARE(QString::fromStdString(*label), text);
}

void CParameterCatalogueTest::secondInitialisationChangesNothing()
{
    const ParameterLimit* before = &limitOf("Restitution");
    Catalogue::initialise();
    initialiseParameterLimits();
    QCOMPARE(&limitOf("Restitution"), before);
    QCOMPARE(ParameterLimits.size(), std::size_t(41));
}

TARNEL_TEST_MAIN(CParameterCatalogueTest)
#include "parameter_catalogue_test.moc"
