// A sweep runs requests again and again, with another fault each time: at each of its points.
#pragma once

#include <cstdlib>
#include <string>

#include "tests/faults/Guest.h"

namespace faults {

/// Whether points are run that otherwise are left out to save time: PELL_FAULTS=all.
inline bool isComplete() {
    return std::getenv("PELL_FAULTS") != nullptr;
}

/// Counts points and what is wrong at them, and says at its end how many there were. When the process ends at a point,
/// or a point does not end within a minute, the point is printed.
class Sweep {
 public:
    explicit Sweep(const char* name);
    ~Sweep();
    Sweep(const Sweep&) = delete;
    Sweep& operator=(const Sweep&) = delete;

    void begin(const std::string& point);
    void end(const Outcome& outcome);

 private:
    const char* name_;
    std::size_t points_ = 0, lost_ = 0, wrong_ = 0;
};

}  // namespace faults
