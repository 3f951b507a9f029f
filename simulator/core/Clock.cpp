#include "simulator/core/Clock.h"

#include <atomic>

namespace simulator {

namespace {

std::atomic<std::int64_t> advancedMilliseconds{0};

}  // namespace

TimePoint now() {
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(advancedMilliseconds.load());
}

void advance(std::chrono::milliseconds time) {
    advancedMilliseconds += time.count();
}

}  // namespace simulator
