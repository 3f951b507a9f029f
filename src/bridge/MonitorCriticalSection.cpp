#include "bridge/MonitorCriticalSection.h"

#include <libdmc/monitors.h>

namespace torvo {

MonitorCriticalSection::MonitorCriticalSection(const Monitor& monitor) : monitor_(monitor) {
    if (!monitor_.supports(NAMED(DmCtrlSupportedCriticalSection))) return;
    monitor_.write(NAMED(DmCtrlEnterCriticalSection), "Enter critical section.");
    entered_ = true;
}

MonitorCriticalSection::~MonitorCriticalSection() {
    if (!entered_) return;
    try {
        if (const auto exit = libdmcLoader::instance().find(NAMED(DmCtrlExitCriticalSection)))
            exit(monitor_.serial, monitor_.product);
    } catch (...) {
    }
}

}  // namespace torvo
