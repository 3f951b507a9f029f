// Keeps other programs from interleaving their commands while a resource talks to a monitor in several steps.
#pragma once

#include "bridge/Monitor.h"

namespace torvo {

/// Holds the monitor's critical section for a scope, if the monitor has one. Entering can fail ("Enter critical
/// section."), leaving never reports.
class MonitorCriticalSection {
 public:
    explicit MonitorCriticalSection(const Monitor& monitor);
    ~MonitorCriticalSection();
    MonitorCriticalSection(const MonitorCriticalSection&) = delete;
    MonitorCriticalSection& operator=(const MonitorCriticalSection&) = delete;

 private:
    const Monitor& monitor_;
    bool entered_ = false;
};

}  // namespace torvo
