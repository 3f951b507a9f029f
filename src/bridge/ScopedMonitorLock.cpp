#include "bridge/ScopedMonitorLock.h"

namespace torvo {

ScopedMonitorLock::ScopedMonitorLock(const Monitor& monitor) : monitor_(monitor) {
    if (const auto lock = libdmcLoader::instance().find(NAMED(DmCtrlLockMonitor)))
        locked_ = lock(monitor_.serial.c_str(), monitor_.product.c_str()) >= 0;
}

ScopedMonitorLock::~ScopedMonitorLock() {
    if (!locked_) return;
    try {
        if (const auto unlock = libdmcLoader::instance().find(NAMED(DmCtrlUnlockMonitor)))
            unlock(monitor_.serial.c_str(), monitor_.product.c_str());
    } catch (...) {
    }
}

}  // namespace torvo
