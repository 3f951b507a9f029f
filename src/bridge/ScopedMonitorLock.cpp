#include "bridge/ScopedMonitorLock.h"

#include <libdmc/monitors.h>

namespace torvo {

ScopedMonitorLock::ScopedMonitorLock(const Monitor& monitor) : monitor_(monitor) {
    if (const auto lock = libdmcLoader::instance().find(NAMED(DmCtrlLockMonitor)))
        locked_ = lock(monitor_.serial, monitor_.product) >= 0;
}

ScopedMonitorLock::~ScopedMonitorLock() {
    if (!locked_) return;
    try {
        if (const auto unlock = libdmcLoader::instance().find(NAMED(DmCtrlUnlockMonitor)))
            unlock(monitor_.serial, monitor_.product);
    } catch (...) {
    }
}

}  // namespace torvo
