// The list of monitors; the critical section, the HID handle and the lock of each.
#include <utility>

#include "simulator/core/Recorder.h"
#include "simulator/libdmc/Functions.h"

using simulator::Answer;
using simulator::answer;
using simulator::LibraryCall;
using simulator::Monitor;
using simulator::MonitorCall;
using simulator::Output;
using simulator::World;
namespace result = simulator::result;

namespace {

[[maybe_unused]] const bool announced = simulator::announceSimulatedCompanions();

}  // namespace

// ---- The list of monitors -------------------------------------------------------------------------------------------

DmResult DmCtrlFind(uint32_t reserved1, uint32_t reserved2) {
    return LibraryCall(__func__, {reserved1, reserved2}).run([](World& world) {
        world.find();
        return Answer();
    });
}

// The enumeration stays as it is until the next DmCtrlFind: there is nothing to let go of.
DmResult DmCtrlRelease() {
    return LibraryCall(__func__).run([](World&) { return Answer(); });
}

DmResult DmCtrlGetNumMonitors(uint32_t* count) {
    return LibraryCall(__func__).run([](World& world) { return answer({world.enumerate().size()}); }, {count});
}

DmResult DmCtrlGetSerialProduct(uint32_t index, char* serial, char* product, uint32_t flags) {
    return LibraryCall(__func__, {index, flags})
        .run(
            [&](World& world) -> Answer {
                const auto monitors = world.enumerate();
                if (index >= monitors.size()) return result::noMoreData;
                return answer({monitors[index]->serial, monitors[index]->product});
            },
            {Output::text(serial, DM_SERIAL_SIZE), Output::text(product, DM_PRODUCT_SIZE)});
}

// ---- Critical section -----------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedCriticalSection, "criticalSection");

DmResult DmCtrlEnterCriticalSection(const char* serial, const char* product) {
    return MonitorCall(__func__, serial, product).run("criticalSection", [](Monitor& monitor) {
        const auto owned = std::exchange(monitor.inCriticalSection, true);
        return owned ? result::criticalSectionOwned : result::success;
    });
}

DmResult DmCtrlExitCriticalSection(const char* serial, const char* product) {
    return MonitorCall(__func__, serial, product).run("criticalSection", [](Monitor& monitor) {
        const auto owned = std::exchange(monitor.inCriticalSection, false);
        return owned ? result::success : result::invalidPrecondition;
    });
}

// ---- HID handle and lock --------------------------------------------------------------------------------------------

DmResult DmCtrlGetHIDHandle(const char* serial, const char* product, void** handle) {
    return MonitorCall(__func__, serial, product)
        .run([](Monitor& monitor) { return answer({monitor.hidHandle}); }, {Output::handle(handle)});
}

DmResult DmCtrlLockMonitor(const char* serial, const char* product) {
    return MonitorCall(__func__, serial, product).run([](Monitor& monitor) {
        const auto locked = std::exchange(monitor.locked, true);
        return locked ? result::locked : result::success;
    });
}

DmResult DmCtrlUnlockMonitor(const char* serial, const char* product) {
    return MonitorCall(__func__, serial, product).run([](Monitor& monitor) {
        const auto locked = std::exchange(monitor.locked, false);
        return locked ? result::success : result::invalidPrecondition;
    });
}
