// The firmware of a monitor, and how its updates go.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "simulator/core/FirmwarePackage.h"
#include "simulator/core/Values.h"

namespace simulator {

struct Firmware {
    enum class State : std::uint32_t { idle, transferring, transferred, updating };

    FirmwareVersionRecord version{};  ///< what the monitor runs; an update that fails leaves it as it is
    std::string device;               ///< the identifier of the device
    State state = State::idle;
    FirmwareVersionRecord transferred{};  ///< what an update will bring, in the last two states
    std::uint32_t pollsLeft = 0;          ///< how often the state is still told while updating

    // As the scenario says.
    std::chrono::duration<double, std::milli> blockTime{};
    bool callbackThread = false;
    std::uint32_t failAtBlock = 0;
    std::uint32_t unplugAtBlock = 0;
    std::uint32_t updatePolls = 0;

    /// The members of "firmware" in a scenario. Throws when they are not what they should be.
    static Firmware fromScenario(const Json& json);

    bool isBusy() const { return state == State::transferring || state == State::updating; }
    void update();

    /// The state as the monitor tells it; an update ends by being asked for.
    State poll();

    /// The monitor has lost its connection: what it runs is all that is left.
    void interrupt() { state = State::idle; }
};

}  // namespace simulator
