#pragma once

#include <chrono>
#include <functional>

/// What passes from its making until it is told, on lines of "<name> <number>": `seconds` of wall
/// time, `cpu` seconds of this process without its children, and `peak_kib`, the largest resident
/// size of the process so far.
class CMeasurement
{
public:
    CMeasurement();
    void say() const;

private:
    double m_processorSeconds;
    std::chrono::steady_clock::time_point m_begin;
};

/// Runs the work once and says what it took.
void measured(const std::function<void()>& work);

/// One more figure in the same form.
void sayFigure(const char* name, double value);

/// Resident size at this moment, in KiB.
double residentKiB();
