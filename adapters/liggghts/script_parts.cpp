#include "adapters/liggghts/script_parts.h"

#include "adapters/liggghts/input_script.h"

#include <array>

namespace liggghts {
namespace {

constexpr double NeighbourSkin = 0.8; ///< of the smallest radius
const char* const DumpColumns = "id type radius x y z vx vy vz";

using Number = double SContact::*;

/// A symmetric matrix over the three materials. The engine asks for contacts that never come about
/// too; they get the values of their particles' contact.
void writePairs(CScriptText& script, const char* fix, const char* property,
                const SEngineValues& values, Number number)
{
    const double particles = values.particles.*number;
    const double wall = values.wall.*number;
    const double floor = values.floor.*number;
    script.line("fix", fix, "all property/global", property, "peratomtypepair 3", particles, wall,
                floor, wall, wall, floor, floor, floor, floor);
}

void writeMaterials(CScriptText& script, const SExperiment& experiment)
{
    const std::array<const SMaterial*, 3> materials{&experiment.particles, &experiment.wall,
                                                    &experiment.floor};
    script.line("fix m1 all property/global youngsModulus peratomtype", materials[0]->youngsModulus,
                materials[1]->youngsModulus, materials[2]->youngsModulus);
    script.line("fix m2 all property/global poissonsRatio peratomtype", materials[0]->poissonsRatio,
                materials[1]->poissonsRatio, materials[2]->poissonsRatio);
}

} // namespace

std::string contactModel(const SExperiment& experiment, const SEngineValues& values)
{
    return std::string("model hertz tangential history") +
           (values.hasCohesion() ? " cohesion sjkr" : "") + " rolling_friction " +
           experiment.rolling;
}

void writeScriptHead(CScriptText& script, const SExperiment& experiment,
                     const SEngineValues& values, const SSchedule& schedule,
                     const std::string& domain)
{
    script.line("# Written by orva-liggghts. Material 1: particles, 2: wall, 3: floor. SI units.");
    for (const char* line : {"atom_style granular", "atom_modify map array", "boundary f f f",
                             "newton off", "communicate single vel yes", "units si"}) {
        script.line(line);
    }
    script.line("region domain", domain, "units box");
    script.line("create_box 3 domain");
    script.line("neighbor", NeighbourSkin * experiment.smallestRadius(), "bin");
    script.line("neigh_modify delay 0");
    writeMaterials(script, experiment);
    writePairs(script, "m3", "coefficientRestitution", values, &SContact::restitution);
    writePairs(script, "m4", "coefficientFriction", values, &SContact::staticFriction);
    writePairs(script, "m5", "coefficientRollingFriction", values, &SContact::rollingFriction);
    if (values.hasCohesion()) {
        writePairs(script, "m6", "cohesionEnergyDensity", values, &SContact::cohesion);
    }
    script.line("pair_style gran", contactModel(experiment, values));
    script.line("pair_coeff * *");
    script.line("timestep", schedule.timeStep);
}

void writeScriptOutput(CScriptText& script)
{
    script.line("thermo_style custom step atoms ke");
    script.line("thermo 0");
    script.line("thermo_modify lost error norm no flush yes");
}

void writeWord(CScriptText& script, const std::string& word)
{
    script.line("print \"@ " + word + "\"");
}

void writeSave(CScriptText& script)
{
    script.line("write_dump all custom save.*.dump", DumpColumns);
}

void writeScriptEnd(CScriptText& script)
{
    script.line("write_dump all custom", EngineFiles::Final, DumpColumns);
    writeWord(script, EngineWords::Done);
}

} // namespace liggghts
