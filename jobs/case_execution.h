#pragma once

struct CaseTask;
class CCaseWorkers;

namespace CaseExecution {

/// Runs the simulator of a case and waits for its end; a coupling server runs beside it, and an
/// analysis is started behind it. Returns the exit code, which is other than 0 for a simulator that
/// didn't start or that was ended from outside. Runs on any thread without an event loop.
int run(const CaseTask& task, CCaseWorkers& workers);

} // namespace CaseExecution
