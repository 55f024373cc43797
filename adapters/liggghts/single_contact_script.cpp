#include "adapters/liggghts/single_contact_script.h"

#include "adapters/liggghts/input_script.h"
#include "adapters/liggghts/script_parts.h"

#include <algorithm>
#include <cmath>

namespace liggghts {
namespace {

constexpr double Gap = 0.1; ///< radii between the bodies at first

/// Shares of its first speed at which there is nothing more to see: a sliding sphere rolls at 5/7.
constexpr double SlidingEnds = 0.72;
constexpr double RollingEnds = 0.1;

std::string block(double x0, double x1, double y, double z)
{
    CScriptText text;
    text.line("block", x0, x1, -y, y, -z, z);
    return trimmed(text.text());
}

/// Twenty times what two elastic spheres of the softer material would stay together, and the way
/// to each other.
unsigned long collisionSteps(const SExperiment& experiment, const SSchedule& schedule)
{
    const double radius = experiment.smallestRadius();
    const double mass = experiment.density * experiment.meanVolume();
    const double modulus =
        0.5 * std::min({experiment.particles.youngsModulus, experiment.wall.youngsModulus,
                        experiment.floor.youngsModulus});
    const double contact =
        2.87 * std::pow(mass * mass / (radius * modulus * modulus * experiment.speed), 0.2);
    const double way = 2.0 * Gap * radius / experiment.speed;
    return static_cast<unsigned long>(std::ceil((way + 20.0 * contact) / schedule.timeStep));
}

void writeSphere(CScriptText& script, const SExperiment& experiment, int number, double z,
                 const std::string& motion)
{
    script.line("create_atoms 1 single 0 0", z);
    script.line("set atom", number, "diameter", 2.0 * experiment.smallestRadius(), "density",
                experiment.density, motion);
}

/// Two spheres, or a sphere and the plane at 0, come together along z.
void writeCollision(CScriptText& script, const SExperiment& experiment, const std::string& model,
                    unsigned long steps)
{
    const double radius = experiment.smallestRadius();
    if (experiment.against == "particles") {
        const std::string half = numberText(0.5 * experiment.speed);
        writeSphere(script, experiment, 1, -(1.0 + 0.5 * Gap) * radius, "vz " + half);
        writeSphere(script, experiment, 2, (1.0 + 0.5 * Gap) * radius, "vz -" + half);
    } else {
        const int type = experiment.against == "wall" ? WallType : FloorType;
        script.line("fix plane all wall/gran", model, "primitive type", type, "zplane 0");
        writeSphere(script, experiment, 1, (1.0 + Gap) * radius,
                    "vz -" + numberText(experiment.speed));
    }
    script.line("fix motion all nve/sphere");
    writeScriptOutput(script);
    script.line("run 0");
    writeWord(script, EngineWords::Released);
    writeSave(script);
    script.line("run", steps);
    writeSave(script);
}

/// A sphere on the floor with a speed along x, until nothing more is to be seen.
void writeThrow(CScriptText& script, const SExperiment& experiment, const std::string& model,
                const SSchedule& schedule)
{
    const bool rolling = experiment.kind == EExperiment::RollingSphere;
    const double radius = experiment.smallestRadius();
    script.line("fix gravity all gravity", experiment.gravity, "vector 0 0 -1");
    script.line("fix plane all wall/gran", model, "primitive type", FloorType, "zplane 0");
    const std::string spin = rolling ? " omegay " + numberText(experiment.speed / radius) : "";
    writeSphere(script, experiment, 1, radius, "vx " + numberText(experiment.speed) + spin);
    script.line("fix motion all nve/sphere");
    writeScriptOutput(script);
    script.line("variable now equal step*dt");
    script.line("variable speed equal vcm(all,x)");
    script.line("fix samples all print", schedule.samplingSteps, "\"${now} ${speed}\" file",
                EngineFiles::Samples, "screen no");
    script.line("run 0");
    writeWord(script, EngineWords::Released);
    writeSave(script);
    script.line("variable turn loop", schedule.saveTurns);
    script.line("label turning");
    script.line("run", schedule.saveSteps, "pre no post no");
    writeSave(script);
    script.line("if \"${speed} <", (rolling ? RollingEnds : SlidingEnds) * experiment.speed,
                R"(" then "jump SELF rested")");
    script.line("next turn");
    script.line("jump SELF turning");
    script.line("label rested");
}

} // namespace

std::string singleContactScript(const SExperiment& experiment, const SEngineValues& values,
                                const SSchedule& schedule)
{
    const double radius = experiment.smallestRadius();
    const bool meets = experiment.kind == EExperiment::Collision;
    const double seconds =
        static_cast<double>(schedule.saveTurns * schedule.saveSteps) * schedule.timeStep;
    const double way = meets ? 4.0 * radius : experiment.speed * seconds + 4.0 * radius;
    CScriptText script;
    writeScriptHead(script, experiment, values, schedule,
                    block(-4.0 * radius, way, 4.0 * radius, 8.0 * radius));
    const std::string model = contactModel(experiment, values);
    if (meets) {
        writeCollision(script, experiment, model, collisionSteps(experiment, schedule));
    } else {
        writeThrow(script, experiment, model, schedule);
    }
    writeWord(script, EngineWords::Rested);
    writeScriptEnd(script);
    return script.text();
}

} // namespace liggghts
