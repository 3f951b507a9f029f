// The variables of functions, each initialised when its function is first called. Replaces functions of the compiler's
// runtime library, which take memory and handles for it. For libpell alone, like Exceptions.cpp.
#include <windows.h>
//
#include <cxxabi.h>

#include <atomic>

namespace {

constinit SRWLOCK lock = SRWLOCK_INIT;
constinit CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;

/// What the compiler puts beside a variable: 8 bytes, zero at first. The function goes on without calling anything here
/// when the first byte is not zero.
struct Guard {
    std::atomic<bool> isInitialised;
    bool isBeingInitialised;
};
static_assert(sizeof(Guard) <= sizeof(__cxxabiv1::__guard));

Guard& toGuard(__cxxabiv1::__guard* guard) noexcept {
    return *reinterpret_cast<Guard*>(guard);
}

void endInitialisation(Guard& guard, bool isInitialised) noexcept {
    AcquireSRWLockExclusive(&lock);
    guard.isInitialised.store(isInitialised, std::memory_order_release);
    guard.isBeingInitialised = false;
    ReleaseSRWLockExclusive(&lock);
    WakeAllConditionVariable(&changed);
}

}  // namespace

namespace __cxxabiv1 {

/// 1 when the caller is to initialise the variable, 0 when it is initialised.
extern "C" int __cxa_guard_acquire(__guard* ofVariable) {
    Guard& guard = toGuard(ofVariable);
    AcquireSRWLockExclusive(&lock);
    while (guard.isBeingInitialised) SleepConditionVariableSRW(&changed, &lock, INFINITE, 0);
    const bool isInitialised = guard.isInitialised.load(std::memory_order_relaxed);
    if (!isInitialised) guard.isBeingInitialised = true;
    ReleaseSRWLockExclusive(&lock);
    return isInitialised ? 0 : 1;
}

extern "C" void __cxa_guard_release(__guard* ofVariable) noexcept {
    endInitialisation(toGuard(ofVariable), true);
}

/// The variable's constructor threw: the next caller tries again.
extern "C" void __cxa_guard_abort(__guard* ofVariable) noexcept {
    endInitialisation(toGuard(ofVariable), false);
}

}  // namespace __cxxabiv1
