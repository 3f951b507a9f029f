// Keeps other users of the monitor-control library from a monitor for the span of a firmware step.
#pragma once

#include "bridge/Monitor.h"

namespace torvo {

/// Locks the monitor for a scope. A library without such locks, or a lock that fails, is no error: the step runs
/// unlocked.
class ScopedMonitorLock {
 public:
    explicit ScopedMonitorLock(const Monitor& monitor);
    ~ScopedMonitorLock();
    ScopedMonitorLock(const ScopedMonitorLock&) = delete;
    ScopedMonitorLock& operator=(const ScopedMonitorLock&) = delete;

 private:
    const Monitor& monitor_;
    bool locked_ = false;
};

}  // namespace torvo
