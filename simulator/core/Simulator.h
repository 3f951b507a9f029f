// What hosts and tests do with the simulator.
//
// All functions may be called from any thread.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>

#include "simulator/core/Json.h"

namespace simulator {

/// Replaces the monitors by those of a scenario (see World.h) and drops all scripts. Throws std::invalid_argument and
/// changes nothing when it is not a scenario.
void loadScenario(const Json& scenario);

/// Carries out one instruction; throws std::invalid_argument with a text for people when it cannot be understood.
///   {"simulate": "return", "function": F, "result": N, "outputs": [...], "times": K, "product": P, "serial": S}
///   {"simulate": "throw", "function": F, "times": K, "product": P, "serial": S}
///   {"simulate": "lie", "function": F, "as": X, "times": K, "product": P, "serial": S}
///   {"simulate": "plug" | "unplug", "product": P, "serial": S}
///   {"simulate": "reset"}
void simulate(const Json& instruction);

/// What the simulated companions were called with on this thread while the recording lives. The innermost recording of
/// a thread takes everything; a thread without one leaves no trace. So two threads' requests are kept apart.
class Recording {
 public:
    Recording();
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// {"function", "arguments", "result"}, in order. "result" is null when the function threw by script; "error" says
    /// why the simulation failed, for example that scripted outputs do not suit the function.
    Json calls = Json::array();
    Json responses = Json::array();  ///< {"promise", "status", "text"}
    Json events = Json::array();     ///< {"name", "text"}
    Json log = Json::array();        ///< {"name", "level", "line"}

    /// Called with each event as it arrives, on the thread that brings it.
    std::function<void(const Json& event)> onEvent;

 private:
    Recording* outer_;
};

/// The handles of the firmware library that are open, by kind ("package", "string", "profile"): {} when there are none.
/// Those of the process: a reset leaves them alone.
Json openHandles();

/// Releases the handles that are open, for a test that kept the plug-in from doing it.
void releaseHandles();

/// A list of texts: how callers misused such handles (released one twice, used a released one, released one that a
/// transfer uses) since this was asked last.
Json takeHandleFaults();

/// A list of the monitors that DmCtrlLockMonitor keeps locked, as "PRODUCT/SERIAL".
Json lockedMonitors();

/// Called on entry to and on exit from every simulated function, on its thread, so that a test can distinguish the
/// plug-in's own work from the simulator's; `call` in between, before the function does anything, and a test may let it
/// wait there. To be set while no request runs; null: no observer.
struct GateObserver {
    void (*enter)() = nullptr;
    void (*leave)() = nullptr;
    void (*call)(const char* function) = nullptr;
};
void setGateObserver(GateObserver observer);

}  // namespace simulator
