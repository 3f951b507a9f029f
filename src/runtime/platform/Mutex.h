// The lock of everything that threads share.
#pragma once

#ifdef _WIN32
#include <atomic>
#include <cstdint>
#else
#include <mutex>
#endif

namespace torvo::platform {

/// A lock that the thread that holds it may take again. For std::lock_guard and its like; it may stand in an object
/// that is initialised before any code runs. Under Windows neither making nor taking it needs memory or a handle, so
/// that neither fails.
#ifdef _WIN32
class Mutex {
 public:
    constexpr Mutex() noexcept = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock() noexcept;
    void unlock() noexcept;

 private:
    void* lock_ = nullptr;                   // an SRWLOCK, which is a pointer that is null at first
    std::atomic<std::uint32_t> holder_ = 0;  // the thread that holds it
    std::uint32_t depth_ = 0;                // how many times it holds it
};
#else
using Mutex = std::recursive_mutex;
#endif

}  // namespace torvo::platform
