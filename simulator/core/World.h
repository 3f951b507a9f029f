// The monitors that exist only in memory.
//
// They come from a scenario, a JSON document; scenario.json is the built-in one and shows the form:
//   "settings"  what every monitor keeps, by name: an object that may have
//               "value"        a number, text, list or record; or one for each mode or colour, as a list or an object
//               "min", "max"   the range of all numbers in the value; objects when its members have their own
//               "of"           a list of the values that there are; of a list, those that its items may have
//               "most"         how many items a list may have; otherwise a list keeps its length
//               "size"         of a text, the closing NUL included
//               "feature"      the feature that it belongs to, unless it is one itself
//             and of some settings, as their functions say
//               "whenOff"      of "power": "answers" all as before, or "timesOut" with all but power
//               "milliseconds" how long a job runs that is started by this state
//               "keeps"        how many of the last runs there are
//   "firmware"  of every monitor; resets and saving are not about it
//               "version"            what it runs, such as "2.0.1.5.3"
//               "device"             the identifier of the device
//               "blockMilliseconds"  how long a block of a transfer takes; fractions are fine
//               "callbackThread"     true: progress is reported from another thread than the caller's
//               "failAtBlock"        the transfer fails before this block, counted from 1; 0: never
//               "unplugAtBlock"      the monitor is gone when this block has been sent; 0: never
//               "updatePolls"        how often an update is still reported as going on before it is done
//               "updateEnds"         with "newVersion"; with "oldVersion", after an update without effect; or "gone":
//               the
//                                    monitor does not come back until it is plugged in again, then with the old version
//   "products"  by name: what a product has of "unsupported", "settings" and "firmware", as a monitor below
//   "monitors"  in the order of the enumeration; each has "product" and "serial" and may have
//               "unsupported"  names of features that it lacks (a setting's name is one too)
//               "settings"     what differs from the common settings
//               "firmware"     what differs from the common one
//               "connected"    false: it can be plugged in later
//               "serial" may be empty, and two monitors may have the same product and serial: functions then reach the
//               first of them
//             and how it behaves
//               "callMilliseconds"  how long each call about it takes
//               "ignoresWrites"     true: what is set is taken without an error, and nothing changes
//               "unplugAtCall"      it is gone at this call about it, counted from 1; 0: never
//               "reachedByInputs"   a list of inputs: it is gone when it shows none of them. Plugged in again, it shows
//                                   the first
// What a scenario leaves out of "settings" and "firmware" is as in the built-in one, and so are all "products" when it
// has none. Anywhere in the settings, two
// objects stand for long lists: {"ramp": N, "max": M} for N numbers that rise from 0 to M, and {"grid": [levels]} for a
// colour at each point of a cube, blue changing fastest.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/core/Clock.h"
#include "simulator/core/Firmware.h"
#include "simulator/core/Settings.h"

namespace simulator {

struct Monitor {
    std::string serial;
    std::string product;
    std::vector<std::string> unsupported;
    Settings settings;
    Settings saved;                                  ///< the settings that a reset brings back
    std::optional<std::uint32_t> selectedPort{};     ///< whose signal is measured, whatever port is asked about
    TimePoint keysLockedUntil{};                     ///< beside the lock that is a setting
    TimePoint boostedSince{};                        ///< while the backlight booster is on
    TimePoint::duration boosted{};                   ///< before that
    std::map<std::string, TimePoint> jobsStarted{};  ///< by the setting of their state
    TimePoint selfQCLockedUntil{};
    std::optional<std::uint32_t> selectedMode{};  ///< of the settings that each mode has, unless it is the current one
    bool connected = true;
    bool found = true;  ///< known to the monitor-control library: enumerated, and its functions work
    bool inCriticalSection = false;
    bool locked = false;           ///< against other users of the monitor-control library
    std::uintptr_t hidHandle = 0;  ///< another one for each connection, never 0
    Firmware firmware;
    Milliseconds callTime{};                       ///< of each call about it
    bool ignoresWrites = false;                    ///< of settings
    std::uint32_t unplugAtCall = 0;                ///< 0: never
    std::uint32_t calls = 0;                       ///< about it, so far
    std::vector<std::uint32_t> reachedByInputs{};  ///< empty: by any

    std::string address() const { return product + "/" + serial; }

    /// Off, and of those that answer nothing then.
    bool isAsleep() const;

    /// Out of reach by what it does itself: it shows another input, or did not come back from an update.
    bool hasLeft() const;

    /// Of a setting also: whether it supports the feature that the setting belongs to.
    bool supports(const std::string& feature) const;
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
    Monitor* findMonitor(std::string_view serial, std::string_view product);
    Monitor* findMonitor(const void* hidHandle);

    /// Plugged monitors join the enumeration here, as they do when the library looks for monitors afresh.
    void find();

    /// A plugged monitor waits for the next `find`; an unplugged one is gone at once. False: not in the scenario.
    bool plug(std::string_view serial, std::string_view product);
    bool unplug(std::string_view serial, std::string_view product);

    /// Gone as by `unplug`, one of several of the same address.
    void disconnect(Monitor& monitor);

    /// From now on each call about the monitors takes so long; an empty text stands for any.
    void delay(std::string_view serial, std::string_view product, Milliseconds time);

    /// All of the scenario, connected or not.
    const std::vector<Monitor>& monitors() const { return monitors_; }

    /// True when the scenario has such a monitor, connected or not; an empty text stands for any.
    bool knows(std::string_view serial, std::string_view product) const;

 private:
    Monitor* lookUp(std::string_view serial, std::string_view product);

    std::vector<Monitor> monitors_;
};

}  // namespace simulator
