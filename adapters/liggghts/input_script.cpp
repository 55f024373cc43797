#include "adapters/liggghts/input_script.h"

#include "adapters/liggghts/script_parts.h"
#include "adapters/liggghts/single_contact_script.h"

#include <cmath>

namespace liggghts {
namespace EngineFiles {

const char* const Input = "in.liggghts";
const char* const Log = "log.liggghts";
const char* const Mesh = "vessel.stl";
const char* const Samples = "samples.txt";
const char* const Final = "final.dump";

} // namespace EngineFiles

namespace EngineWords {

const char* const Inserted = "inserted";
const char* const Settled = "settled";
const char* const Unsettled = "unsettled";
const char* const Released = "released";
const char* const Rested = "rested";
const char* const Moving = "moving";
const char* const Done = "done";

} // namespace EngineWords

namespace {

constexpr double InsertionSpeed = 0.3;

/// The input of one vessel experiment, written from top to bottom.
class CVesselScript
{
public:
    CVesselScript(const SExperiment& experiment, const SEngineValues& values,
                  const SSchedule& schedule, const SGeometry& geometry)
        : m_experiment(experiment)
        , m_values(values)
        , m_schedule(schedule)
        , m_geometry(geometry)
        , m_model(contactModel(experiment, values))
    {
    }

    std::string write(unsigned long seed)
    {
        writeScriptHead(m_script, m_experiment, m_values, m_schedule, domain());
        m_script.line("fix gravity all gravity", m_experiment.gravity, "vector 0 0 -1");
        writeWalls();
        writeFilling(seed);
        writeSettling();
        writeRelease();
        writeLifting();
        writeResting();
        return m_script.text();
    }

private:
    std::string domain() const
    {
        const double radius = m_experiment.largestRadius();
        const double reach = m_geometry.reach;
        const double depth = 0.5 * m_experiment.columnDepth + radius;
        CScriptText text;
        if (m_experiment.kind == EExperiment::Collapse) {
            text.line("block", -radius, reach, -depth, depth, -radius, m_geometry.domainTop);
        } else {
            text.line("block", -reach, reach, -reach, reach, -radius, m_geometry.domainTop);
        }
        return trimmed(text.text());
    }

    void writePrimitive(const std::string& name, int type, const std::string& shape)
    {
        m_script.line("fix", name, "all wall/gran", m_model, "primitive type", type, shape);
    }

    void writePlane(const std::string& name, const char* axis, double place)
    {
        writePrimitive(name, WallType, std::string(axis) + " " + numberText(place));
    }

    void writeWalls()
    {
        writePrimitive("floor", FloorType, "zplane 0");
        if (m_experiment.kind == EExperiment::Collapse) {
            writePlane("back", "xplane", 0.0);
            writePlane("left", "yplane", -0.5 * m_experiment.columnDepth);
            writePlane("right", "yplane", 0.5 * m_experiment.columnDepth);
            writePlane("gate", "xplane", m_experiment.columnWidth);
            return;
        }
        if (!needsMesh(m_experiment)) {
            writePrimitive("vessel", WallType,
                           "zcylinder " + numberText(m_experiment.vesselRadius) + " 0 0");
            return;
        }
        m_script.line("fix surface all mesh/surface file", EngineFiles::Mesh, "type", WallType);
        m_script.line("fix vessel all wall/gran", m_model, "mesh n_meshes 1 meshes surface");
        if (m_experiment.kind == EExperiment::DrawDown) {
            writePlane("lid", "zplane", m_experiment.dropHeight);
            writePrimitive("bin", FloorType,
                           "zcylinder " + numberText(m_geometry.binRadius) + " 0 0");
        }
    }

    void writeFillingRegion()
    {
        const double from = m_geometry.fillFrom;
        const double to = m_geometry.fillTo;
        if (m_experiment.kind == EExperiment::Collapse) {
            const double depth = 0.5 * m_experiment.columnDepth;
            m_script.line("region filling block", 0, m_experiment.columnWidth, -depth, depth, from,
                          to, "units box");
        } else {
            m_script.line("region filling cylinder z 0 0", m_experiment.vesselRadius, from, to,
                          "units box");
        }
    }

    /// Every part of the filling that draws lots has a prime of its own behind the seed.
    void writeFilling(unsigned long seed)
    {
        const std::size_t kinds = m_experiment.radii.size();
        const std::vector<unsigned long> primes = primesFrom(seed, kinds + 2);
        std::string templates;
        for (std::size_t kind = 0; kind < kinds; ++kind) {
            const SRadius& one = m_experiment.radii[kind];
            const std::string name = "kind" + std::to_string(kind + 1);
            m_script.line("fix", name, "all particletemplate/sphere", primes[kind + 2],
                          "atom_type 1 density constant", m_experiment.density, "radius constant",
                          one.radius);
            templates += " " + name + " " + numberText(one.share);
        }
        writeFillingRegion();
        m_script.line("fix kinds all particledistribution/discrete/numberbased", primes[1],
                      static_cast<unsigned long>(kinds), trimmed(templates));
        m_script.line("fix fill all insert/pack seed", primes[0],
                      "distributiontemplate kinds vel constant 0 0", -InsertionSpeed,
                      "insert_every once overlapcheck yes all_in yes particles_in_region",
                      static_cast<unsigned long>(m_experiment.count), "region filling");
        m_script.line("fix motion all nve/sphere");
        writeScriptOutput(m_script);
        m_script.line("run 1");
        m_script.line("unfix fill");
        m_script.line("variable here equal atoms");
        writeWord(m_script, std::string(EngineWords::Inserted) + " ${here}");
        m_script.line("if \"${here} !=", static_cast<unsigned long>(m_experiment.count),
                      R"(" then quit)");
    }

    /// Energy of all spheres below which they count as lying still.
    double restEnergy() const
    {
        const double mass = m_experiment.density * m_experiment.meanVolume();
        return 0.5 * mass * static_cast<double>(m_experiment.count) *
               std::pow(m_experiment.restSpeed, 2);
    }

    void writeSettling()
    {
        m_script.line("variable energy equal ke");
        m_script.line("run", m_schedule.settleSteps);
        m_script.line("variable look loop", m_schedule.settleTurns);
        m_script.line("label settling");
        m_script.line("run", m_schedule.settleSteps, "pre no post no");
        m_script.line("if \"${energy} <", restEnergy(), R"(" then "jump SELF settled")");
        m_script.line("next look");
        m_script.line("jump SELF settling");
        writeWord(m_script, EngineWords::Unsettled);
        m_script.line("quit");
        m_script.line("label settled");
        writeWord(m_script, EngineWords::Settled);
    }

    void writeRelease()
    {
        if (m_experiment.kind == EExperiment::Collapse) {
            m_script.line("unfix gate");
        } else if (m_experiment.kind == EExperiment::DrawDown) {
            m_script.line("unfix lid");
            m_script.line("region below block INF INF INF INF INF", m_experiment.dropHeight,
                          "units box");
            m_script.line("variable now equal step*dt");
            m_script.line("variable passed equal mass(all,below)");
            m_script.line("fix samples all print", m_schedule.samplingSteps,
                          "\"${now} ${passed}\" file", EngineFiles::Samples, "screen no");
        } else if (m_experiment.lifted) {
            m_script.line("fix lift all move/mesh mesh surface linear 0 0", m_experiment.liftSpeed);
        } else {
            m_script.line("unfix vessel");
        }
        m_script.line("run 0");
        writeWord(m_script, EngineWords::Released);
        writeSave(m_script);
    }

    void writeLifting()
    {
        if (m_geometry.liftTurns == 0) {
            return;
        }
        m_script.line("variable up loop", m_geometry.liftTurns);
        m_script.line("label lifting");
        m_script.line("run", m_schedule.saveSteps, "pre no post no");
        writeSave(m_script);
        m_script.line("next up");
        m_script.line("jump SELF lifting");
        m_script.line("unfix lift");
        m_script.line("unfix vessel");
        m_script.line("unfix surface");
        m_script.line("run 0");
    }

    void writeResting()
    {
        m_script.line("variable turn loop", m_schedule.saveTurns - m_geometry.liftTurns);
        m_script.line("label turning");
        m_script.line("run", m_schedule.saveSteps, "pre no post no");
        writeSave(m_script);
        m_script.line("if \"${turn} >=", m_schedule.surelyMoving, "&& ${energy} <", restEnergy(),
                      R"(" then "jump SELF rested")");
        m_script.line("next turn");
        m_script.line("jump SELF turning");
        writeWord(m_script, EngineWords::Moving);
        m_script.line("quit");
        m_script.line("label rested");
        writeWord(m_script, EngineWords::Rested);
        writeScriptEnd(m_script);
    }

    const SExperiment& m_experiment;
    const SEngineValues& m_values;
    const SSchedule& m_schedule;
    const SGeometry& m_geometry;
    std::string m_model;
    CScriptText m_script;
};

} // namespace

std::string inputScript(const SExperiment& experiment, const SEngineValues& values,
                        const SSchedule& schedule, const SGeometry& geometry, unsigned long seed)
{
    if (!experiment.isHeap()) {
        return singleContactScript(experiment, values, schedule);
    }
    return CVesselScript(experiment, values, schedule, geometry).write(seed);
}

} // namespace liggghts
