#pragma once

#include "adapters/liggghts/deck_values.h"
#include "adapters/liggghts/experiment.h"
#include "adapters/liggghts/schedule.h"
#include "adapters/liggghts/script_text.h"

#include <string>

namespace liggghts {

/// The engine's numbers of the three materials.
enum EMaterialType { ParticleType = 1, WallType = 2, FloorType = 3 };

/// The words behind "model" for every contact.
std::string contactModel(const SExperiment& experiment, const SEngineValues& values);

/// Units, the domain ("block" and its six bounds), the materials, the contact model, the time step.
void writeScriptHead(CScriptText& script, const SExperiment& experiment,
                     const SEngineValues& values, const SSchedule& schedule,
                     const std::string& domain);

/// A line of step, spheres and kinetic energy where a run begins and ends, as soon as it comes; a
/// lost sphere is an error there.
void writeScriptOutput(CScriptText& script);

/// A line that the adapter recognises.
void writeWord(CScriptText& script, const std::string& word);

/// A dump of the present state.
void writeSave(CScriptText& script);

/// The final state and the last word.
void writeScriptEnd(CScriptText& script);

} // namespace liggghts
