#include "tests/faults/Sweep.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <mutex>
#include <thread>

namespace faults {

namespace {

std::string current;
std::atomic<unsigned> begun = 0;  // points; even when none runs

[[noreturn]] void giveUp(const char* why) {
    std::printf("%s at %s\n", why, current.c_str());
    std::fflush(stdout);
    std::_Exit(3);
}

void watch() {
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        std::signal(number, [](int) { giveUp("the process ends"); });
    std::thread([] {
        for (unsigned last = begun + 1; last != begun || last % 2 == 0;) {
            last = begun;
            std::this_thread::sleep_for(std::chrono::minutes(1));
        }
        giveUp("a hang");
    }).detach();
}

}  // namespace

Sweep::Sweep(const char* name) : name_(name) {
    static std::once_flag isWatched;
    std::call_once(isWatched, watch);
}

Sweep::~Sweep() {
    std::printf("%s: %zu points, %zu lost answers, %zu wrong answers\n", name_, points_, lost_, wrong_);
    EXPECT_GT(points_, 1000U);
}

void Sweep::begin(const std::string& point) {
    current = point;
    ++begun;
    ++points_;
}

void Sweep::end(const Outcome& outcome) {
    ++begun;
    lost_ += outcome.isLost;
    wrong_ += !outcome.problems.empty() && !outcome.isLost;
    constexpr std::size_t shown = 30;
    if (lost_ + wrong_ <= shown || isComplete())
        for (const std::string& problem : outcome.problems) ADD_FAILURE() << current << ": " << problem;
}

}  // namespace faults
