// Scripted results: what a simulated function shall answer instead of doing its normal work.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/core/Answer.h"

namespace simulator {

struct Script {
    std::string function;
    std::string serial;                 ///< empty: any
    std::string product;                ///< empty: any
    bool throws = false;                ///< throw a std::runtime_error
    std::shared_ptr<const Json> lie{};  ///< a number or text in the place of those that the normal work answers
    Result result{};
    std::shared_ptr<const Json> outputs;  ///< a list, one entry per out-parameter; a JSON null leaves one untouched
    std::optional<std::uint64_t> times;   ///< none: permanent

    /// A success without outputs of its own leaves the function to do its normal work.
    bool replacesWork() const { return outputs || result.failed(); }
};

/// Not thread-safe: whoever uses the scripts holds the simulator's mutex.
class Scripts {
 public:
    /// Limited scripts queue in the order given. A permanent one replaces that of the same function and monitor.
    void add(Script script);

    /// What this call shall do, if anything: the first limited script that fits, else the permanent one that says most
    /// about the monitor. Counts down a limited script.
    std::optional<Script> take(std::string_view function, std::string_view serial, std::string_view product);

    /// Those that still have an effect.
    const std::vector<Script>& all() const { return scripts_; }

    void clear() { scripts_.clear(); }

 private:
    std::vector<Script> scripts_;
};

}  // namespace simulator
