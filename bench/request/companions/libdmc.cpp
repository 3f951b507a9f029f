// The functions that the measured requests call. The build adds an empty one for each other import of libpell.
#include <libdmc.h>

#include <cmath>
#include <cstddef>
#include <cstring>

#include "World.h"

namespace {

constexpr DmResult ok = 0;
constexpr DmResult failed = static_cast<DmResult>(0x80000000);

DmResult take(const void* data, std::size_t size) {
    bench::World& world = bench::world();
    ++world.writes;
    if (world.observer) world.observer->written(data, size);
    return ok;
}

DmCalibrationTarget calibrationTarget() {
    DmCalibrationTarget target{};
    target.accuracy = 1;
    target.Lmax = 270.5;
    target.Lmin = 0.54;
    target.colorTemperature = 6500;
    target.whitePoint = {0.3127, 0.329};
    target.displayFunction = 3;
    target.exp = 22;
    std::strcpy(target.userFileName, "reading room.csv");
    target.LambEnable = 1;
    target.Lamb = 0.25;
    target.ambient = 51.7;
    std::strcpy(target.ambientSensor.name, "Front sensor");
    std::strcpy(target.ambientSensor.serial, "20000001");
    for (std::size_t i = 0; i < DM_TARGET_LUT_SIZE; ++i) target.lut[i] = std::pow(static_cast<double>(i) / 255, 2.2);
    return target;
}

}  // namespace

DmResult DmCtrlFind(uint32_t, uint32_t) {
    return ok;
}

DmResult DmCtrlGetNumMonitors(uint32_t* count) {
    *count = bench::world().monitors;
    return ok;
}

// Counts down, so that the last monitor has the same serial however many there are.
DmResult DmCtrlGetSerialProduct(uint32_t index, char* serial, char* product, uint32_t) {
    const uint32_t monitors = bench::world().monitors;
    if (index >= monitors) return failed;
    const uint32_t number = monitors - index;
    std::memcpy(serial, "10000000", DM_SERIAL_SIZE);
    serial[6] = static_cast<char>('0' + number / 10);
    serial[7] = static_cast<char>('0' + number % 10);
    std::memcpy(product, "TQ271-P", sizeof "TQ271-P");
    return ok;
}

int32_t DmCtrlSupportedBrightness(const char*, const char*) {
    return 1;
}

DmResult DmCtrlGetRangeBrightnessForStep(const char*, const char*, uint32_t* minimum, uint32_t* maximum) {
    *minimum = 0;
    *maximum = 200;
    return ok;
}

DmResult DmCtrlGetBrightnessForPercentage(const char*, const char*, double* percentage) {
    *percentage = 45.5;
    return ok;
}

DmResult DmCtrlGetBrightnessForStep(const char*, const char*, uint32_t* step) {
    *step = 91;
    return ok;
}

DmResult DmCtrlSetBrightnessForPercentage(const char*, const char*, double percentage) {
    return take(&percentage, sizeof percentage);
}

DmResult DmCtrlSetBrightnessForStep(const char*, const char*, uint32_t step) {
    return take(&step, sizeof step);
}

DmResult DmCtrlSet3DLUTDirect(const char*, const char*, const DmColor* colors, uint32_t count) {
    return take(colors, count * sizeof *colors);
}

// Has no import: libpell looks it up by name.
DmResult DmCtrlGetSelfQCCalTarget(const char*, const char*, DmCalibrationTarget* target) {
    static const DmCalibrationTarget kept = calibrationTarget();
    *target = kept;
    return ok;
}
