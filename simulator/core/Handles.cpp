#include "simulator/core/Handles.h"

#include <cstdlib>
#include <fstream>
#include <string_view>
#include <utility>

namespace simulator {

namespace {

std::string name(const char* kind, std::uintptr_t number) {
    return std::string(kind) + " " + std::to_string(number);
}

}  // namespace

std::map<std::string, std::size_t> Handles::count() const {
    std::map<std::string, std::size_t> counts;
    for (const auto& [number, entry] : entries_) ++counts[entry.kind];
    return counts;
}

std::uintptr_t Handles::insert(const char* kind, std::shared_ptr<void> object) {
    entries_[++last_] = {kind, std::move(object)};
    logHandles("open " + name(kind, last_));
    return last_;
}

Handles::Entry* Handles::lookUp(const char* kind, std::uintptr_t number, const char* function) {
    const auto found = entries_.find(number);
    if (found != entries_.end() && std::string_view(found->second.kind) == kind) return &found->second;
    faults_.push_back(std::string(function) + ": there is no open " + name(kind, number));
    return nullptr;
}

void Handles::erase(const char* kind, std::uintptr_t number, const char* function) {
    logHandles("release " + name(kind, number));
    const auto entry = lookUp(kind, number, function);
    if (!entry) return;
    if (entry->object.use_count() > 1)
        faults_.push_back(std::string(function) + ": " + name(kind, number) + " is in use");
    entries_.erase(number);
}

void logHandles(const std::string& line) {
    if (const auto file = std::getenv("PELL_SIMULATOR_HANDLES"))
        std::ofstream(file, std::ios::app | std::ios::binary) << line + "\n";
}

}  // namespace simulator
