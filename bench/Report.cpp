#include "Report.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <ostream>
#include <string_view>
#include <thread>

namespace bench {

namespace {

double median(std::vector<double> samples) {
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end());
    return *middle;
}

std::string formatted(const char* format, double number) {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, number);
    return buffer.data();
}

/// With three significant digits, in a unit that leaves one to three of them before the point.
std::string scaled(double number, double step, std::initializer_list<const char*> units) {
    const auto* unit = units.begin();
    for (; number >= 999.5 && unit + 1 != units.end(); ++unit) number /= step;
    return formatted(number < 9.995 ? "%.2f" : number < 99.95 ? "%.1f" : "%.0f", number) + ' ' + *unit;
}

std::string timeText(double nanoseconds) {
    return scaled(nanoseconds, 1000, {"ns", "µs", "ms", "s"});
}

std::string sizeText(double bytes) {
    return bytes < 1024 ? formatted("%.0f B", bytes) : scaled(bytes / 1024, 1024, {"KiB", "MiB"});
}

std::string ratioText(double ratio) {
    return formatted(ratio < 0.1 ? "%.3f" : ratio < 100 ? "%.2f" : "%.0f", ratio);
}

std::string processor() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    return "unknown processor";
}

std::string compiler() {
#ifdef __clang__
    return __VERSION__;
#else
    return "GCC " __VERSION__;
#endif
}

void printLine(std::ostream& out, const std::vector<std::string>& fields) {
    for (const auto& field : fields) out << "| " << field << ' ';
    out << "|\n";
}

void printHead(std::ostream& out, const std::string& title, const std::vector<std::string>& names) {
    out << "\n### " << title << "\n\n";
    printLine(out, names);
    out << "|---|";
    for (std::size_t i = 1; i < names.size(); ++i) out << "---:|";
    out << '\n';
}

void addOnce(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

}  // namespace

struct Report::Table {
    std::string section;
    std::vector<std::string> rows, columns;
    std::map<std::pair<std::string, std::string>, const Cell*> cells;

    const Cell* cell(const std::string& row, const std::string& column) const {
        const auto found = cells.find({row, column});
        return found != cells.end() ? found->second : nullptr;
    }
    template <class Condition>
    bool any(Condition condition) const {
        return std::any_of(cells.begin(), cells.end(), [&](const auto& entry) { return condition(*entry.second); });
    }
};

bool Report::ReportContext(const Context& context) {
    GetOutputStream() << processor() << ", " << context.cpu_info.num_cpus << " cores; " << compiler() << '\n';
    return true;
}

void Report::ReportRuns(const std::vector<Run>& runs) {
    for (const auto& run : runs) {
        if (run.run_type != Run::RT_Iteration) continue;
        if (run.error_occurred) {
            GetErrorStream() << run.benchmark_name() << ": " << run.error_message << '\n';
            continue;
        }
        auto& cell = cells_[run.family_index];
        const auto& name = run.run_name.function_name;
        const auto first = name.find('|'), second = name.find('|', first + 1);
        cell.section = name.substr(0, first);
        cell.row = name.substr(first + 1, second - first - 1);
        cell.column = name.substr(second + 1);
        const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
        cell.nanoseconds.push_back(seconds * 1e9);
        for (const auto& [counter, value] : run.counters) {
            if (counter == "bytes_per_second") cell.processedBytes = value * seconds;
            if (counter == "allocations") cell.allocations = value;
            if (counter == "bytes") cell.allocatedBytes = value;
        }
    }
}

void Report::Finalize() {
    std::vector<Table> tables;
    for (const auto& entry : cells_) {
        const Cell& cell = entry.second;
        auto table =
            std::find_if(tables.begin(), tables.end(), [&](const Table& t) { return t.section == cell.section; });
        if (table == tables.end()) table = tables.insert(table, {cell.section, {}, {}, {}});
        addOnce(table->rows, cell.row);
        addOnce(table->columns, cell.column);
        table->cells[{cell.row, cell.column}] = &cell;
    }
    for (const auto& table : tables) printTimes(table);
    for (const auto& table : tables)
        if (table.any([](const Cell& cell) { return cell.allocations >= 0; })) printAllocations(table);
    if (judged_ > 0) GetOutputStream() << '\n' << met_ << " of " << judged_ << " targets are met.\n";
}

void Report::printTimes(const Table& table) {
    const bool withThroughput = table.any([](const Cell& cell) { return cell.processedBytes > 0; });
    std::vector<std::string> names{""};
    for (const auto& column : table.columns) {
        names.push_back(column);
        if (column == kOurs && withThroughput) names.push_back("MB/s");
    }
    printHead(GetOutputStream(), table.section, names);
    for (const auto& row : table.rows) {
        std::vector<std::string> fields{row};
        const Cell* const ours = table.cell(row, kOurs);
        for (const auto& column : table.columns) {
            const Cell* const cell = table.cell(row, column);
            const double time = cell ? median(cell->nanoseconds) : 0;
            if (!cell) {
                fields.push_back("-");
            } else if (!ours || cell == ours) {
                fields.push_back(timeText(time));
            } else {
                const double ratio = time / median(ours->nanoseconds);
                fields.push_back(ratioText(ratio) + judge(*cell, ratio));
            }
            if (column == kOurs && withThroughput)
                fields.push_back(cell ? formatted("%.0f", cell->processedBytes / time * 1e3) : "-");
        }
        printLine(GetOutputStream(), fields);
    }
}

void Report::printAllocations(const Table& table) {
    std::vector<std::string> columns;
    for (const auto& column : table.columns)
        if (table.any([&](const Cell& cell) { return cell.column == column && cell.allocations >= 0; }))
            columns.push_back(column);
    std::vector<std::string> names{""};
    names.insert(names.end(), columns.begin(), columns.end());
    printHead(GetOutputStream(), table.section + ": allocations, their bytes", names);
    for (const auto& row : table.rows) {
        std::vector<std::string> fields{row};
        for (const auto& column : columns) {
            const Cell* const cell = table.cell(row, column);
            if (!cell || cell->allocations < 0)
                fields.push_back("-");
            else
                fields.push_back(formatted("%.0f", cell->allocations) +
                                 (column == kOurs ? judge(*cell, cell->allocations) : "") + ", " +
                                 sizeText(cell->allocatedBytes));
        }
        printLine(GetOutputStream(), fields);
    }
}

std::string Report::judge(const Cell& cell, double figure) {
    const auto target = std::find_if(targets_.begin(), targets_.end(), [&](const Target& t) {
        return t.section == cell.section && t.column == cell.column && (t.row == cell.row || t.row == "*");
    });
    if (target == targets_.end()) return {};
    const bool isLeast = target->column != kOurs;
    const bool met = isLeast ? figure >= target->limit : figure <= target->limit;
    ++judged_;
    met_ += met;
    if (met) return {};
    return formatted(isLeast ? " (<%g)" : " (>%g)", target->limit);
}

}  // namespace bench
