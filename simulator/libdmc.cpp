#include <libdmc.h>

#include <utility>

#include "simulator/core/Gate.h"

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

int32_t DmCtrlSupportedCriticalSection(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).supports("criticalSection");
}

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

// ---- Brightness and contrast ----------------------------------------------------------------------------------------

int32_t DmCtrlSupportedBrightness(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).supports("brightness");
}
DmResult DmCtrlGetRangeBrightnessForStep(const char* serial, const char* product, uint32_t* minimum,
                                         uint32_t* maximum) {
    return monitorCall(__func__, serial, product).range("brightness", minimum, maximum);
}
DmResult DmCtrlGetBrightnessForPercentage(const char* serial, const char* product, double* percentage) {
    return monitorCall(__func__, serial, product).getPercentage("brightness", percentage);
}
DmResult DmCtrlGetBrightnessForStep(const char* serial, const char* product, uint32_t* step) {
    return monitorCall(__func__, serial, product).get("brightness", step);
}
DmResult DmCtrlSetBrightnessForPercentage(const char* serial, const char* product, double percentage) {
    return monitorCall(__func__, serial, product, percentage).setPercentage("brightness");
}
DmResult DmCtrlSetBrightnessForStep(const char* serial, const char* product, uint32_t step) {
    return monitorCall(__func__, serial, product, step).set("brightness");
}

int32_t DmCtrlSupportedContrast(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).supports("contrast");
}
DmResult DmCtrlGetRangeContrastForStep(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum) {
    return monitorCall(__func__, serial, product).range("contrast", minimum, maximum);
}
DmResult DmCtrlGetContrastForPercentage(const char* serial, const char* product, double* percentage) {
    return monitorCall(__func__, serial, product).getPercentage("contrast", percentage);
}
DmResult DmCtrlGetContrastForStep(const char* serial, const char* product, uint32_t* step) {
    return monitorCall(__func__, serial, product).get("contrast", step);
}
DmResult DmCtrlSetContrastForPercentage(const char* serial, const char* product, double percentage) {
    return monitorCall(__func__, serial, product, percentage).setPercentage("contrast");
}
DmResult DmCtrlSetContrastForStep(const char* serial, const char* product, uint32_t step) {
    return monitorCall(__func__, serial, product, step).set("contrast");
}

// ---- Hue and saturation ---------------------------------------------------------------------------------------------

int32_t DmCtrlSupported6ColorsHue(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).supports("hue");
}
DmResult DmCtrlGetRange6ColorsHue(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum) {
    return monitorCall(__func__, serial, product).range("hue", minimum, maximum);
}
DmResult DmCtrlGet6ColorsHue(const char* serial, const char* product, uint32_t* hue) {
    return monitorCall(__func__, serial, product).get("hue", hue);
}
DmResult DmCtrlSet6ColorsHue(const char* serial, const char* product, uint32_t hue) {
    return monitorCall(__func__, serial, product, hue).set("hue");
}

int32_t DmCtrlSupported6ColorsSaturation(const char* serial, const char* product) {
    return monitorCall(__func__, serial, product).supports("saturation");
}
DmResult DmCtrlGetRange6ColorsSaturation(const char* serial, const char* product, uint32_t* minimum,
                                         uint32_t* maximum) {
    return monitorCall(__func__, serial, product).range("saturation", minimum, maximum);
}
DmResult DmCtrlGet6ColorsSaturation(const char* serial, const char* product, uint32_t* saturation) {
    return monitorCall(__func__, serial, product).get("saturation", saturation);
}
DmResult DmCtrlSet6ColorsSaturation(const char* serial, const char* product, uint32_t saturation) {
    return monitorCall(__func__, serial, product, saturation).set("saturation");
}
