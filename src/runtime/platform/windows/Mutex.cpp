#include "runtime/platform/Mutex.h"

#include <windows.h>

namespace torvo::platform {

namespace {

SRWLOCK* nativeLock(void*& lock) noexcept {
    static_assert(sizeof(SRWLOCK) == sizeof lock);
    return reinterpret_cast<SRWLOCK*>(&lock);
}

}  // namespace

// Only the calling thread writes its own number there, so what other threads do meanwhile does not matter.
void Mutex::lock() noexcept {
    const DWORD self = GetCurrentThreadId();
    if (holder_.load(std::memory_order_relaxed) != self) {
        AcquireSRWLockExclusive(nativeLock(lock_));
        holder_.store(self, std::memory_order_relaxed);
    }
    ++depth_;
}

void Mutex::unlock() noexcept {
    if (--depth_ > 0) return;
    holder_.store(0, std::memory_order_relaxed);
    ReleaseSRWLockExclusive(nativeLock(lock_));
}

}  // namespace torvo::platform
