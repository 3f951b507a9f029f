// Picture modes: fine contrast, modes, what each mode has of its own; saving and resetting.
#include <algorithm>

#include "simulator/libdmc/Functions.h"

using simulator::Answer;
using simulator::byNumber;
using simulator::Json;
using simulator::Monitor;
using simulator::monitorCall;
using simulator::Output;
using simulator::part;
using simulator::readSetting;
using simulator::writeSetting;
namespace result = simulator::result;

// ---- Fine contrast --------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedFineContrast, "fineContrast");
LIST(DmCtrlEnumFineContrast, "fineContrast", "of");
COUNT(DmCtrlGetFineContrastCount, "fineContrast", "of");
GET(DmCtrlGetFineContrast, "fineContrast");
SET(DmCtrlSetFineContrast, "fineContrast");

MEMBER(DmCtrlGetFineContrastNameSize, "fineContrastName", "size");
DmResult DmCtrlGetFineContrastName(const char* serial, const char* product, uint32_t fineContrast, char* name,
                                   uint32_t size) {
    return monitorCall(__func__, serial, product, fineContrast)
        .get("fineContrastName", Output::text(name, size), fineContrast);
}
SET_AT(DmCtrlSetFineContrastName, "fineContrastName", byNumber);

SUPPORTS(DmCtrlSupportedFineContrastSkip, "fineContrastSkip");
GET_AT(DmCtrlGetFineContrastSkip, "fineContrastSkip", byNumber);
SET_AT(DmCtrlSetFineContrastSkip, "fineContrastSkip", byNumber);

int32_t DmCtrlSupportedFCFunction(const char* serial, const char* product, uint32_t fineContrast, uint32_t feature) {
    return monitorCall(__func__, serial, product, fineContrast, feature)
        .supports("fineContrastFeature", [&](Monitor& monitor) {
            const auto features = part(monitor.setting("fineContrastFeature"), fineContrast);
            return features && std::find(features->begin(), features->end(), feature) != features->end();
        });
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
    return monitorCall(__func__, serial, product, mode).run("mode", [&](Monitor& monitor) {
        auto answer = writeSetting(monitor.setting("mode"), Json(), mode);
        if (answer.result == result::success) monitor.selectedMode.reset();
        return answer;
    });
}

MEMBER(DmCtrlGetModeNameSize, "modeName", "size");
DmResult DmCtrlGetModeName(const char* serial, const char* product, uint32_t mode, char* name, uint32_t size) {
    return monitorCall(__func__, serial, product, mode).get("modeName", Output::text(name, size), mode);
}
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

Json selectedMode(Monitor& monitor) {
    return monitor.selectedMode ? Json(*monitor.selectedMode) : monitor.setting("mode").at("value");
}

}  // namespace

DmResult DmCtrlSetTargetSelectionMode(const char* serial, const char* product, uint32_t mode) {
    return monitorCall(__func__, serial, product, mode).run("mode", [&](Monitor& monitor) {
        const auto& modes = monitor.setting("mode").at("of");
        if (std::find(modes.begin(), modes.end(), mode) == modes.end()) return Answer{result::invalidArgument};
        monitor.selectedMode = mode;
        return Answer();
    });
}

SUPPORTS(DmCtrlSupportedHybridGammaPXL, "hybridGammaPXL");
DmResult DmCtrlGetHybridGammaPXL(const char* serial, const char* product, uint32_t* enabled) {
    return monitorCall(__func__, serial, product)
        .run("hybridGammaPXL",
             [](Monitor& monitor) { return readSetting(monitor.setting("hybridGammaPXL"), selectedMode(monitor)); },
             {enabled});
}
DmResult DmCtrlSetHybridGammaPXL(const char* serial, const char* product, uint32_t enabled) {
    return monitorCall(__func__, serial, product, enabled).run("hybridGammaPXL", [&](Monitor& monitor) {
        return writeSetting(monitor.setting("hybridGammaPXL"), selectedMode(monitor), enabled);
    });
}

// ---- Saving and resetting -------------------------------------------------------------------------------------------
//
// A reset brings back all settings as they were saved last, else as the scenario has them; every type means the same.
// With an index, both are only about what the mode of that number has of its own.

namespace {

/// Copies what one mode has.
Answer copyMode(const Json& mode, Json& from, Json& to) {
    for (const auto setting : {"modeName", "modeSkip", "hybridGammaPXL"}) {
        const auto source = part(from.at(setting), mode);
        const auto target = part(to.at(setting), mode);
        if (!source || !target) return {result::invalidArgument};
        *target = *source;
    }
    return {};
}

}  // namespace

DmResult DmCtrlSave(const char* serial, const char* product, uint32_t type) {
    return monitorCall(__func__, serial, product, type).run([](Monitor& monitor) {
        monitor.saved = monitor.settings;
        return Answer();
    });
}
DmResult DmCtrlReset(const char* serial, const char* product, uint32_t type) {
    return monitorCall(__func__, serial, product, type).run([](Monitor& monitor) {
        monitor.settings = monitor.saved;
        monitor.selectedMode.reset();
        return Answer();
    });
}
DmResult DmCtrlSaveAtIndex(const char* serial, const char* product, uint32_t type, uint32_t index) {
    return monitorCall(__func__, serial, product, type, index).run("mode", [&](Monitor& monitor) {
        return copyMode(index, monitor.settings, monitor.saved);
    });
}
DmResult DmCtrlResetAtIndex(const char* serial, const char* product, uint32_t type, uint32_t index) {
    return monitorCall(__func__, serial, product, type, index).run("mode", [&](Monitor& monitor) {
        return copyMode(index, monitor.saved, monitor.settings);
    });
}
