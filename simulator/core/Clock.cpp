#include "simulator/core/Clock.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <new>

namespace simulator {

namespace {

using Real = std::chrono::steady_clock;

struct Clock {
    std::mutex mutex;
    std::condition_variable changed;
    double factor = 1;
    Real::time_point realStart = Real::now();  ///< of the present factor
    TimePoint start = realStart;               ///< the monitors' time then

    TimePoint now() const {
        return start + std::chrono::duration_cast<Real::duration>((Real::now() - realStart) * factor);
    }

    /// Begins anew from here.
    void restart(TimePoint time, double newFactor) {
        start = time;
        realStart = Real::now();
        factor = newFactor;
        changed.notify_all();
    }

    /// Never destroyed: a thread of a library may still wait at the process's end.
    static Clock& instance() {
        alignas(Clock) static std::byte memory[sizeof(Clock)];
        static auto* const clock = new (memory) Clock;
        return *clock;
    }
};

}  // namespace

TimePoint now() {
    auto& clock = Clock::instance();
    const std::lock_guard lock(clock.mutex);
    return clock.now();
}

void advance(Milliseconds time) {
    auto& clock = Clock::instance();
    const std::lock_guard lock(clock.mutex);
    clock.restart(clock.now() + std::chrono::duration_cast<Real::duration>(time), clock.factor);
}

double speed() {
    auto& clock = Clock::instance();
    const std::lock_guard lock(clock.mutex);
    return clock.factor;
}

void setSpeed(double factor) {
    auto& clock = Clock::instance();
    const std::lock_guard lock(clock.mutex);
    clock.restart(clock.now(), factor);
}

void sleepFor(Milliseconds time) {
    auto& clock = Clock::instance();
    std::unique_lock lock(clock.mutex);
    const auto end = clock.now() + std::chrono::duration_cast<Real::duration>(time);
    for (auto left = end - clock.now(); left > left.zero(); left = end - clock.now()) {
        if (clock.factor == 0) return clock.restart(end, 0);
        // At least a little, however fast the time passes; and not for ever at once, however slowly.
        constexpr Milliseconds shortest{0.01};
        constexpr Milliseconds longest{1000};
        const auto real = std::clamp(Milliseconds(left) / clock.factor, shortest, longest);
        clock.changed.wait_for(lock, std::chrono::ceil<std::chrono::microseconds>(real));
    }
}

}  // namespace simulator
