// The list of monitors; the critical section, the HID handle and the lock of each.
#include <utility>

#include "simulator/libdmc/Functions.h"

using simulator::Answer;
using simulator::answer;
using simulator::libraryCall;
using simulator::Monitor;
using simulator::monitorCall;
using simulator::Output;
using simulator::World;
namespace result = simulator::result;

// ---- The list of monitors -------------------------------------------------------------------------------------------

DmResult DmCtrlFind(uint32_t reserved1, uint32_t reserved2) {
    return libraryCall(__func__, reserved1, reserved2).run([](World& world) {
        world.find();
        return Answer();
    });
}

// The enumeration stays as it is until the next DmCtrlFind: there is nothing to let go of.
DmResult DmCtrlRelease() {
    return libraryCall(__func__).run([](World&) { return Answer(); });
}

DmResult DmCtrlGetNumMonitors(uint32_t* count) {
    return libraryCall(__func__).run([](World& world) { return answer(world.enumerate().size()); }, {count});
}

DmResult DmCtrlGetSerialProduct(uint32_t index, char* serial, char* product, uint32_t flags) {
    return libraryCall(__func__, index, flags)
        .run(
            [&](World& world) {
                const auto monitors = world.enumerate();
                if (index >= monitors.size()) return Answer{result::noMoreData};
                return answer(monitors[index]->serial, monitors[index]->product);
            },
            {Output::text(serial, DM_SERIAL_SIZE), Output::text(product, DM_PRODUCT_SIZE)});
}

// ---- Critical section -----------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedCriticalSection, "criticalSection");

DmResult DmCtrlEnterCriticalSection(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).run("criticalSection", [](Monitor& monitor) {
        const auto owned = std::exchange(monitor.inCriticalSection, true);
        return Answer{owned ? result::criticalSectionOwned : result::success};
    });
}

DmResult DmCtrlExitCriticalSection(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).run("criticalSection", [](Monitor& monitor) {
        const auto owned = std::exchange(monitor.inCriticalSection, false);
        return Answer{owned ? result::success : result::invalidPrecondition};
    });
}

// ---- HID handle and lock --------------------------------------------------------------------------------------------

DmResult DmCtrlGetHIDHandle(const char* serial, const char* product, void** handle) {
    return monitorCall(__func__, serial, product)
        .run([](Monitor& monitor) { return answer(monitor.hidHandle); }, {Output::handle(handle)});
}

DmResult DmCtrlLockMonitor(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).run([](Monitor& monitor) {
        const auto locked = std::exchange(monitor.locked, true);
        return Answer{locked ? result::locked : result::success};
    });
}

DmResult DmCtrlUnlockMonitor(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).run([](Monitor& monitor) {
        const auto locked = std::exchange(monitor.locked, false);
        return Answer{locked ? result::success : result::invalidPrecondition};
    });
}
