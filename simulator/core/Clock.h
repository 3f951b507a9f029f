// The time that passes for simulated monitors.
#pragma once

#include <chrono>

namespace simulator {

using TimePoint = std::chrono::steady_clock::time_point;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// The steady clock, as fast as `setSpeed` says and ahead by what `advance` has added, so that nobody need wait. Any
/// thread may call all of these.
TimePoint now();
void advance(Milliseconds time);

/// How many seconds pass for the monitors in a second. 0: time stands still, but for `advance` and for what waits,
/// which it lets pass at once.
double speed();
void setSpeed(double factor);

/// Waits until so much time has passed for the monitors. Not to be called with the simulator's mutex held.
void sleepFor(Milliseconds time);

}  // namespace simulator
