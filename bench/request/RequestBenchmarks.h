// Benchmarks of whole requests: from the four texts of a call to the answer handed over.
#pragma once

#include <vector>

#include "Report.h"

namespace bench {

/// Registers the sections "request" and "request, required costs", and returns what our figures are to reach. First
/// checks every request: throws std::runtime_error when a plug-in is missing or does otherwise than libpell.
[[nodiscard]] std::vector<Target> registerRequestBenchmarks();

}  // namespace bench
