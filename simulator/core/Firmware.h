// The firmware of a monitor, and how its updates go.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "simulator/core/FirmwarePackage.h"

namespace simulator {

struct Firmware {
    /// As the monitor reports it, and one that it cannot report any more.
    enum class State : std::uint32_t { idle, transferring, transferred, updating, gone };
    enum class UpdateEnd { newVersion, oldVersion, gone };

    FirmwareVersionRecord version{};  ///< what the monitor runs; an update that fails leaves it as it is
    std::string device;               ///< the identifier of the device
    State state = State::idle;
    FirmwareVersionRecord transferred{};  ///< what an update will bring, in the last two states
    std::uint32_t pollsLeft = 0;          ///< how often the state is still reported as updating

    // As the scenario says.
    std::chrono::duration<double, std::milli> blockTime{};
    bool callbackThread = false;
    std::uint32_t failAtBlock = 0;
    std::uint32_t unplugAtBlock = 0;
    std::uint32_t updatePolls = 0;
    UpdateEnd updateEnd = UpdateEnd::newVersion;

    bool isBusy() const { return state == State::transferring || state == State::updating; }
    void update();

    /// The state as the monitor reports it; an update ends when its state was asked for often enough.
    State poll();

    /// The monitor has lost its connection: what it runs is all that is left.
    void interrupt() { state = State::idle; }
};

}  // namespace simulator
