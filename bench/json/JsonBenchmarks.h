#pragma once

#include <vector>

#include "Corpora.h"
#include "Report.h"

namespace bench {

/// Registers every section for every corpus and library, and returns what our figures are to reach. First checks that
/// the libraries read and write the corpora right: throws std::runtime_error when ours does not, writes what peers do
/// otherwise to the standard error, and leaves out those that refuse a corpus. The corpora outlive the benchmarks.
[[nodiscard]] std::vector<Target> registerJsonBenchmarks(const std::vector<Corpus>& corpora);

}  // namespace bench
