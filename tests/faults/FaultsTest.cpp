// Whatever fails, a request is answered once, nothing stays locked or open, and the next one is served.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <thread>

#include "tests/plugin/Firmware.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

FILE* start(const std::string& command) {
#ifdef _WIN32
    return _popen(command.c_str(), "rb");
#else
    return popen(command.c_str(), "r");
#endif
}
int finish(FILE* process) {
#ifdef _WIN32
    return _pclose(process);
#else
    return pclose(process);
#endif
}

/// Runs fault_points to the end, behind each point at which it dies, and counts.
class Sweep {
 public:
    explicit Sweep(std::string sweep) : sweep_(std::move(sweep)) {
        while (!done_ && died_ < mostDeaths) runOnce();
        std::printf("%s: %zu points, %zu crashes, %zu hangs, %zu runaways, %zu lost answers, %zu wrong answers\n",
                    sweep_.c_str(), points_, died_ - hangs_ - runaways_, hangs_, runaways_, lost_, wrong_);
        EXPECT_TRUE(done_) << "given up";
        EXPECT_GT(points_, 1000U);
        EXPECT_EQ(problems_, 0U);
    }

 private:
    void runOnce() {
        const std::string program = (host::Plugin::defaultFile().parent_path() / "fault_points").string();
        FILE* const process =
            start(program + " " + sweep_ + " " + std::to_string(series_) + " " + std::to_string(point_));
        ASSERT_TRUE(process);
        char line[4096];
        while (std::fgets(line, sizeof line, process)) read(line);
        const int status = finish(process);
        if (done_ && status == 0) return;
        done_ = false;
        ++died_;
        report("the process ended with " + std::to_string(status) + " at " + name_);
        ++point_;
    }

    void read(std::string line) {
        line.erase(line.find_last_not_of("\r\n") + 1);
        if (line.starts_with("at ")) {
            std::size_t name = 0;
            series_ = std::stoul(line.substr(3), &name);
            point_ = std::stoul(line.substr(3 + name));
            name_ = line.substr(3);
            ++points_;
        }
        points_ -= line == "none";
        lost_ += line.starts_with("lost ");
        wrong_ += line.starts_with("wrong ");
        hangs_ += line == "hang";
        runaways_ += line == "runaway";
        done_ = done_ || line == "done";
        if (line.starts_with("lost ") || line.starts_with("wrong ")) report(line);
    }

    void report(const std::string& problem) {
        if (++problems_ <= shownProblems) ADD_FAILURE() << problem;
    }

    // Unless all points are asked for, which tell how much is wrong.
    const bool isComplete_ = std::getenv("PELL_FAULTS") != nullptr;
    const std::size_t mostDeaths = isComplete_ ? 100'000 : 10, shownProblems = isComplete_ ? 100'000 : 30;

    const std::string sweep_;
    std::string name_ = "its start";
    std::size_t series_ = 0, point_ = 0;
    bool done_ = false;
    std::size_t points_ = 0, died_ = 0, hangs_ = 0, runaways_ = 0, lost_ = 0, wrong_ = 0, problems_ = 0;
};

#ifndef PELL_THREADS_ONLY

TEST(Faults, OfMemoryAndOtherSuppliesAreAnswered) {
    Sweep("shortages");
}

TEST(Faults, OfCompanionsAreAnswered) {
    Sweep("lies");
}

std::size_t openSystemHandles() {
#ifdef _WIN32
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
#else
    return 0;
#endif
}

// Windows has 1,088 indices of thread storage, and a plug-in that keeps one each time ends there.
TEST(Faults, LoadingAndUnloadingLeavesNothingBehind) {
    std::size_t handlesBefore = 0;
    for (int cycle = 0; cycle < (std::getenv("PELL_FAULTS") ? 3000 : 1200); ++cycle) {
        if (cycle == 1) handlesBefore = openSystemHandles();
        const host::Session session;
        const Json exchange = session.call(host::Request{"GET", "Brightness", "TQ271-P", "10000001"});
        ASSERT_EQ(exchange["responses"].size(), 1U) << cycle;
        ASSERT_EQ(exchange["responses"][0]["status"], 200) << cycle;
        ASSERT_EQ(exchange["log"].size(), 1U) << cycle;
    }
    EXPECT_EQ(openSystemHandles(), handlesBefore);
}

#endif

TEST(Faults, DoNotComeFromManyThreads) {
    FirmwarePage page;
    page.firmware({{"blockMilliseconds", 0}});
    std::vector<std::unique_ptr<PackageFile>> packages;
    std::atomic<int> transfers = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        packages.push_back(std::make_unique<PackageFile>(number % 2 ? "TB240" : "TQ271-P", 2048));
        threads.emplace_back([&page, &transfers, number, path = packages.back()->path()] {
            const std::string product = number % 2 ? "TB240" : "TQ271-P", serial = "10000001";
            const auto ask = [&](const char* method, const char* resource, const std::string& body = "",
                                 const std::string& query = "") {
                return page.call(resource, host::Request{method, resource, product, serial, query, body}.texts());
            };
            for (int i = 0; i < 40; ++i) {
                const std::string id = page.open(path);
                EXPECT_NE(id, "");
                const std::string file = Json{{"dfwFile", id}}.dump();
                EXPECT_EQ(ask("PUT", "Brightness", std::to_string(i)).status, 200);
                EXPECT_EQ(ask("GET", "Brightness").status, 200);
                EXPECT_EQ(ask("PUT", "Contrast", std::to_string(i)).status, 200);
                EXPECT_EQ(ask("GET", "Gain").status, 200);
                EXPECT_GE(ask("GET", "Monitors", "", R"({"update":true})").value.size(), 3U);
                EXPECT_EQ(ask("GET", "FirmwareUpdate", "", Json{{"checkDfwFile", id}}.dump()).status, 200);
                EXPECT_EQ(page.describe(id).status, 200);
                transfers += ask("POST", "FirmwareUpdateTransfer", file).status == 200;
                EXPECT_EQ(ask("GET", "FirmwareUpdateVersion").status, 200);
                EXPECT_EQ(page.close(id).status, 200);
                EXPECT_EQ(page.describe(id).status, 500);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_GT(transfers, 0);  // others meet one that is going on
}

// The first requests of a plug-in: what it makes when it is first needed is needed by all of them. The search for the
// logging library takes a while here, so that they meet in it.
TEST(Faults, DoNotComeFromManyThreadsAtTheStart) {
    simulator::setGateObserver({.call = [](const char* function) {
        if (std::string_view(function) == "Plg_GetRegistryExportsPath")
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }});
    for (int round = 0; round < 3; ++round) {
        const host::Session session;
        std::atomic<int> waiting = 16;
        std::vector<std::thread> threads;
        for (int number = 0; number < 16; ++number)
            threads.emplace_back([&] {
                --waiting;
                while (waiting > 0) std::this_thread::yield();
                const Json exchange = session.call(host::Request{"GET", "Brightness", "TQ271-P", "10000001"});
                EXPECT_EQ(exchange["responses"].size(), 1U);
                EXPECT_EQ(exchange["log"].size(), 1U);
            });
        for (std::thread& thread : threads) thread.join();
    }
    simulator::setGateObserver({});
}

}  // namespace
