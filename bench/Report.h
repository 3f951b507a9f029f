#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// The column that the others are compared with.
constexpr const char* kOurs = "libpell";

/// What a figure is to reach; the first target that fits it counts. In a peer's column, the least ratio of its time to
/// ours; in our own, the largest number of allocations.
struct Target {
    std::string section, row, column;  ///< "*" is every row.
    double limit;
};

/// Collects the runs of benchmarks named "section|row|column" and at the end prints a Markdown table for each section:
/// our median time, and the peers' as multiples of it; absolute times in a row that we are not in. Sections, rows and
/// columns stand in the order of their registration, and times are CPU times of the thread.
///
/// SetBytesProcessed adds the throughput. The counters "allocations" and "bytes", for one iteration, get a table of
/// their own.
class Report : public benchmark::BenchmarkReporter {
 public:
    explicit Report(std::vector<Target> targets) : targets_(std::move(targets)) {}

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

 private:
    struct Cell {
        std::string section, row, column;
        std::vector<double> nanoseconds;
        double processedBytes = 0;  // these are those of the last run, as they are the same in each
        double allocations = -1;    // unknown
        double allocatedBytes = 0;
    };
    struct Table;

    void printTimes(const Table& table);
    void printAllocations(const Table& table);
    /// The target of a cell, if it has one, and whether the figure meets it: "" or a remark.
    std::string judge(const Cell& cell, double figure);

    std::vector<Target> targets_;
    std::map<std::int64_t, Cell> cells_;  // in the order of registration
    int judged_ = 0;
    int met_ = 0;
};

}  // namespace bench
