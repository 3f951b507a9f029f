// A sweep runs a request again and again, with another fault each time: at each of its points.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/faults/Guest.h"

namespace faults {

struct Series {
    std::string name;

    /// The outcome at a point, counted from 0, with its name first; none: there is no such point.
    std::function<std::optional<std::pair<std::string, Outcome>>(std::size_t point)> run;
};

/// Something that the plug-in needs fails: memory, and under Windows handles and thread storage.
std::vector<Series> shortages(Guest& guest, bool complete);

/// A function of a companion does not do what it should.
std::vector<Series> lies(Guest& guest, bool complete);

}  // namespace faults
