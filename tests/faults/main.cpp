// fault_points shortages|lies [SERIES POINT]: runs the points of a sweep from that one on, and reports each line by
// line: "at SERIES POINT" before it, "none" when the series has no such point, "lost ..." or "wrong ..." when it is not
// as it must be, "done" at the end. A crash ends it at once; fault_tests, which drives it, starts it again behind that
// point. PELL_FAULTS=all runs points that otherwise are left out to save time.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "tests/faults/Sweep.h"

namespace {

std::atomic<unsigned> finished = 0;

/// Ends the process when no point ends for a minute: a request that never returns.
void watchForHangs() {
    std::thread([] {
        for (unsigned last = finished + 1; last != finished;) {
            last = finished;
            std::this_thread::sleep_for(std::chrono::minutes(1));
        }
        std::puts("hang");
        std::fflush(stdout);
        std::_Exit(3);
    }).detach();
}

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) return 2;
    const bool complete = std::getenv("PELL_FAULTS") != nullptr;
    std::size_t firstSeries = count > 2 ? std::stoul(arguments[2]) : 0;
    std::size_t firstPoint = count > 3 ? std::stoul(arguments[3]) : 0;
    watchForHangs();

    faults::Guest guest;
    const bool aboutLies = std::string(arguments[1]) == "lies";
    const auto all = aboutLies ? faults::lies(guest, complete) : faults::shortages(guest, complete);
    for (std::size_t series = firstSeries; series < all.size(); ++series) {
        for (std::size_t point = series == firstSeries ? firstPoint : 0;; ++point) {
            const std::string where = std::to_string(series) + " " + std::to_string(point) + " " + all[series].name;
            say("at " + where);
            const auto found = all[series].run(point);
            ++finished;
            if (!found) {
                say("none");
                break;
            }
            const auto& [name, outcome] = *found;
            for (const std::string& problem : outcome.problems)
                say((outcome.isLost ? "lost " : "wrong ") + all[series].name + ": " + name + ": " + problem);
        }
    }
    say("done");
    return 0;
}
