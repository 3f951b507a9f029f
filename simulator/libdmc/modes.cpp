// Picture modes: fine contrast, modes, what each mode has of its own; saving and resetting.
#include "simulator/libdmc/Functions.h"

using simulator::byNumber;
using simulator::Monitor;
using simulator::MonitorCall;
using simulator::Settings;
namespace result = simulator::result;

// ---- Fine contrast --------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedFineContrast, "fineContrast");
LIST(DmCtrlEnumFineContrast, "fineContrast", "of");
COUNT(DmCtrlGetFineContrastCount, "fineContrast", "of");
GET(DmCtrlGetFineContrast, "fineContrast");
SET(DmCtrlSetFineContrast, "fineContrast");

MEMBER(DmCtrlGetFineContrastNameSize, "fineContrastName", "size");
GET_TEXT_AT(DmCtrlGetFineContrastName, "fineContrastName", byNumber);
SET_AT(DmCtrlSetFineContrastName, "fineContrastName", byNumber);

SUPPORTS(DmCtrlSupportedFineContrastSkip, "fineContrastSkip");
GET_AT(DmCtrlGetFineContrastSkip, "fineContrastSkip", byNumber);
SET_AT(DmCtrlSetFineContrastSkip, "fineContrastSkip", byNumber);

int32_t DmCtrlSupportedFCFunction(const char* serial, const char* product, uint32_t fineContrast, uint32_t feature) {
    return MonitorCall(__func__, serial, product, {fineContrast, feature})
        .test("fineContrastFeature",
              [&](Monitor& monitor) { return monitor.settings.lists("fineContrastFeature", fineContrast, feature); });
}

SUPPORTS(DmCtrlSupportedPinPFineContrast, "pinPFineContrast");
GET(DmCtrlGetPinPFineContrast, "pinPFineContrast");
SET(DmCtrlSetPinPFineContrast, "pinPFineContrast");

// ---- Modes ----------------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedMode, "mode");
COUNT(DmCtrlGetModeCount, "mode", "of");
GET(DmCtrlGetMode, "mode");

// Whoever changes the mode is also done with the mode that was selected.
DmResult DmCtrlSetMode(const char* serial, const char* product, uint32_t mode) {
    return MonitorCall(__func__, serial, product, {mode}).run("mode", [&](Monitor& monitor) {
        auto answer = monitor.settings.write("mode", mode);
        if (!answer.result.failed()) monitor.selectedMode.reset();
        return answer;
    });
}

MEMBER(DmCtrlGetModeNameSize, "modeName", "size");
GET_TEXT_AT(DmCtrlGetModeName, "modeName", byNumber);
SET_AT(DmCtrlSetModeName, "modeName", byNumber);

SUPPORTS(DmCtrlSupportedModeSkip, "modeSkip");
GET_AT(DmCtrlGetModeSkip, "modeSkip", byNumber);
SET_AT(DmCtrlSetModeSkip, "modeSkip", byNumber);

SUPPORTS(DmCtrlSupportedFlavor, "flavor");
GET(DmCtrlGetFlavor, "flavor");
GET_AT(DmCtrlGetPresetFlavor, "presetFlavor", byNumber);
SET(DmCtrlSetFlavor, "flavor");

// ---- A setting of the selected mode ---------------------------------------------------------------------------------

namespace {

std::uint32_t selectedMode(Monitor& monitor) {
    return monitor.selectedMode ? *monitor.selectedMode : monitor.settings.number("mode");
}

}  // namespace

DmResult DmCtrlSetTargetSelectionMode(const char* serial, const char* product, uint32_t mode) {
    return MonitorCall(__func__, serial, product, {mode}).run("mode", [&](Monitor& monitor) {
        if (!monitor.settings.offers("mode", mode)) return result::invalidArgument;
        monitor.selectedMode = mode;
        return result::success;
    });
}

SUPPORTS(DmCtrlSupportedHybridGammaPXL, "hybridGammaPXL");
DmResult DmCtrlGetHybridGammaPXL(const char* serial, const char* product, uint32_t* enabled) {
    return MonitorCall(__func__, serial, product)
        .run("hybridGammaPXL",
             [](Monitor& monitor) { return monitor.settings.read("hybridGammaPXL", selectedMode(monitor)); },
             {enabled});
}
DmResult DmCtrlSetHybridGammaPXL(const char* serial, const char* product, uint32_t enabled) {
    return MonitorCall(__func__, serial, product, {enabled}).run("hybridGammaPXL", [&](Monitor& monitor) {
        return monitor.settings.write("hybridGammaPXL", enabled, selectedMode(monitor));
    });
}

// ---- Saving and resetting -------------------------------------------------------------------------------------------
//
// A reset brings back all settings as they were saved last, else as the scenario has them; every type means the same.
// With an index, both are only about what the mode of that number has of its own.

namespace {

/// Copies what one mode has.
std::uint32_t copyMode(std::uint32_t mode, Settings& from, Settings& to) {
    for (const auto setting : {"modeName", "modeSkip", "hybridGammaPXL"})
        if (!to.copyFrom(from, setting, mode)) return result::invalidArgument;
    return result::success;
}

}  // namespace

DmResult DmCtrlSave(const char* serial, const char* product, uint32_t type) {
    return MonitorCall(__func__, serial, product, {type}).run([](Monitor& monitor) {
        monitor.saved = monitor.settings;
        return result::success;
    });
}
DmResult DmCtrlReset(const char* serial, const char* product, uint32_t type) {
    return MonitorCall(__func__, serial, product, {type}).run([](Monitor& monitor) {
        monitor.settings = monitor.saved;
        monitor.selectedMode.reset();
        return result::success;
    });
}
DmResult DmCtrlSaveAtIndex(const char* serial, const char* product, uint32_t type, uint32_t index) {
    return MonitorCall(__func__, serial, product, {type, index}).run("mode", [&](Monitor& monitor) {
        return copyMode(index, monitor.settings, monitor.saved);
    });
}
DmResult DmCtrlResetAtIndex(const char* serial, const char* product, uint32_t type, uint32_t index) {
    return MonitorCall(__func__, serial, product, {type, index}).run("mode", [&](Monitor& monitor) {
        return copyMode(index, monitor.saved, monitor.settings);
    });
}
