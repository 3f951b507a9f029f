// The monitors that exist only in memory.
//
// They come from a scenario, a JSON document; scenario.json is the built-in one and shows the form:
//   "settings"  what every monitor keeps, by name: an object with the "value" and, for a number, "min" and "max"
//   "monitors"  in the order of the enumeration; each has "product" and "serial" and may have
//               "unsupported"  names of features that it lacks (a setting's name is one too)
//               "settings"     what differs from the common settings
//               "connected"    false: it can be plugged in later
// What a scenario leaves out of "settings" is as in the built-in one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/core/Values.h"

namespace simulator {

struct Monitor {
    std::string product;
    std::string serial;
    std::vector<std::string> unsupported;
    Json settings;
    bool connected = true;
    bool found = true;  ///< known to the monitor-control library: enumerated, and its functions work
    bool inCriticalSection = false;

    bool supports(std::string_view feature) const;

    /// The named setting; throws std::out_of_range when the scenario has none.
    Json& setting(const std::string& name) { return settings.at(name); }
};

/// Not thread-safe: whoever uses the world holds the simulator's mutex.
class World {
 public:
    /// Throws std::invalid_argument when the scenario has not the form above.
    explicit World(const Json& scenario);

    static const Json& builtInScenario();

    /// The monitors of the enumeration, in order.
    std::vector<const Monitor*> enumerate() const;

    /// Null when the library does not know such a monitor.
    Monitor* findMonitor(std::string_view product, std::string_view serial);

    /// Plugged monitors join the enumeration here, as they do when the library looks for monitors afresh.
    void find();

    /// A plugged monitor waits for the next `find`; an unplugged one is gone at once. False: not in the scenario.
    bool plug(std::string_view product, std::string_view serial);
    bool unplug(std::string_view product, std::string_view serial);

    /// True when the scenario has such a monitor, connected or not; an empty text stands for any.
    bool knows(std::string_view product, std::string_view serial) const;

 private:
    Monitor* lookUp(std::string_view product, std::string_view serial);

    std::vector<Monitor> monitors_;
};

}  // namespace simulator
