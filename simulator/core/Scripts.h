// Scripts: how simulated functions shall depart from their normal work, by name.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/core/Departure.h"

namespace simulator {

struct Script {
    std::string function;
    std::string serial;   ///< empty: any
    std::string product;  ///< empty: any
    Departure departure;
    std::optional<std::uint64_t> times;  ///< none: permanent
};

/// Not thread-safe: whoever uses the scripts holds the simulator's mutex.
class Scripts {
 public:
    /// Limited scripts queue in the order given. A permanent one replaces that of the same function and monitor.
    void add(Script script);

    /// What this call shall do, if anything: the first limited script that fits, else the permanent one that says most
    /// about the monitor. Counts down a limited script.
    std::optional<Departure> take(std::string_view function, std::string_view serial, std::string_view product);

    /// Those that still have an effect.
    const std::vector<Script>& all() const { return scripts_; }

    void clear() { scripts_.clear(); }

 private:
    std::vector<Script> scripts_;
};

}  // namespace simulator
