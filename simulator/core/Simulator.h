// What hosts and tests do with the simulator.
//
// All functions may be called from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "simulator/core/Departure.h"
#include "simulator/core/Json.h"

namespace simulator {

/// Replaces the monitors by those of a scenario (see World.h) and drops all scripts. Throws std::invalid_argument and
/// changes nothing when it is not a scenario. From then on it can be chosen as "file".
void loadScenario(const Json& scenario);

/// The same with one of the names below. Throws std::invalid_argument, with a suggestion, for a name that there is not.
void chooseScenario(const std::string& name);

/// "built-in", the ready scenarios of simulator/scenarios, and "file", the document that was loaded last, if one was.
std::vector<std::string> scenarioNames();

/// The scenario that was loaded last, a document; of the built-in one, what it does not say about every scenario.
Json currentScenario();

/// {"scenario", "scenarios", "speed", "scripts", "monitors"}: the name of the scenario; the names that there are; how
/// fast the clock runs; the instructions "return", "throw" and "lie" that still have an effect; and all monitors of the
/// scenario as {"product", "serial", "connected", "found", "delay", "power", "inputPort", "brightness", "firmware"},
/// without what one lacks. A monitor that is not found is none that the library knows; the delay is that of each call,
/// in milliseconds.
Json describeWorld();

/// Carries out one instruction; throws std::invalid_argument with a text for people when it cannot be understood.
///   {"simulate": "return", "function": F, "result": N, "outputs": [...], "times": K, "product": P, "serial": S}
///   {"simulate": "throw", "function": F, "times": K, "product": P, "serial": S}
///   {"simulate": "lie", "function": F, "as": X, "times": K, "product": P, "serial": S}
///   {"simulate": "plug" | "unplug", "product": P, "serial": S}
///   {"simulate": "delay", "milliseconds": N, "product": P, "serial": S}
///   {"simulate": "advance", "milliseconds": N}
///   {"simulate": "speed", "factor": N}
///   {"simulate": "scenario", "name": NAME}
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

    std::vector<double> milliseconds;  ///< how long each of the calls took

    /// Called with each event as it arrives, on the thread that brings it.
    std::function<void(const Json& event)> onEvent;

 private:
    Recording* outer_;
};

/// Called with each event {"name", "text"} of the process as it arrives, on the thread that brings it, whether that has
/// a recording or not. To be set while no request runs; empty: no observer.
void setEventObserver(std::function<void(const Json& event)> observer);

/// Whether the libdmc of this process is the simulated one, so that there are monitors to simulate anything of.
bool companionsAreSimulated();

/// The handles of the firmware library that are open, by kind ("package", "string", "profile"): {} when there are none.
/// Those of the process: a reset leaves them alone.
Json openHandles();

/// Releases the handles that are open, for the library whose code they need, when that goes. Leaves them alone while a
/// call is in progress, be it one whose thread the end of the process has stopped.
void releaseHandles();

/// A list of texts: how callers misused such handles (released one twice, used a released one, released one that a
/// transfer uses) since this was asked last.
Json takeHandleFaults();

/// A list of the monitors that DmCtrlLockMonitor keeps locked, as "PRODUCT/SERIAL".
Json lockedMonitors();

/// A list of the monitors that DmCtrlEnterCriticalSection keeps in their critical sections, likewise.
Json monitorsInCriticalSection();

/// Called on entry to and on exit from every simulated function, on its thread, so that a test can distinguish the
/// plug-in's own work from the simulator's; `call` in between, before the function does anything, and a test may let it
/// wait there. To be set while no request runs; null: no observer.
struct GateObserver {
    void (*enter)() = nullptr;
    void (*leave)() = nullptr;
    void (*call)(const char* function) = nullptr;
};
void setGateObserver(GateObserver observer);

/// Asked about each call that no script is about; null: nobody. To be set while no request runs. It runs within the
/// simulator, and must not call it.
void setDepartures(std::function<Departure(std::string_view function)> departures);

}  // namespace simulator
