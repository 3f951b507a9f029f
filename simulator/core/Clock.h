// The time that passes for simulated monitors.
#pragma once

#include <chrono>

namespace simulator {

using TimePoint = std::chrono::steady_clock::time_point;

/// The steady clock, ahead by what `advance` has added, so that tests need not wait.
TimePoint now();
void advance(std::chrono::milliseconds time);

}  // namespace simulator
