// What the firmware update resources share.
#pragma once

#include <libdmc/monitors.h>
#include <libfwupdate.h>

#include "bridge/Resource.h"
#include "bridge/ScopedMonitorLock.h"
#include "resources/firmware/DfwFileManager.h"

namespace torvo::bridge {

/// The firmware library, loaded if it can be.
inline const libfwupdateLoader& firmwareLibrary() {
    return libfwupdateLoader::instance();
}

inline FWHidHandle hidHandle(const Monitor& monitor) {
    const FWHidHandle handle = monitor.read(DmCtrlGetHIDHandle, "Get hid handle.");
    checkInternal(handle != nullptr, "Hid handle is not available.");
    return handle;
}

/// An open package. The manager's mutex is held only for the look-up, so that no request about files ever waits for a
/// monitor.
inline DfwFileManager::Owner findDfwFile(const std::string& identifier) {
    const DfwFileManager& manager = DfwFileManager::instance();
    const std::lock_guard lock(manager.mutex());
    return manager.get(identifier);
}

}  // namespace torvo::bridge
