// Power, inputs and their signals, USB, KVM and keys, energy saving, backlight, identity, layout.
#include <records/device.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "simulator/core/Clock.h"
#include "simulator/libdmc/Functions.h"

using simulator::Answer;
using simulator::answer;
using simulator::byNumber;
using simulator::Input;
using simulator::Json;
using simulator::Monitor;
using simulator::MonitorCall;
using simulator::Output;
namespace result = simulator::result;

// ---- Power: how a monitor that is off answers, the setting says (see World.h) ---------------------------------------

SUPPORTS(DmCtrlSupportedPower, "power");
GET(DmCtrlGetPower, "power");
SET(DmCtrlSetPower, "power");

SUPPORTS(DmCtrlSupportedPowerLED, "powerLED");
RANGE(DmCtrlGetRangePowerLED, "powerLED");
GET(DmCtrlGetPowerLED, "powerLED");
SET(DmCtrlSetPowerLED, "powerLED");

SUPPORTS(DmCtrlSupportedPowerSaveSetting, "powerSave");
SUPPORTS(DmCtrlSupportedPowerSaveSettingV2, "powerSaveLow");
GET(DmCtrlGetPowerSaveSettingV2, "powerSave");
SET(DmCtrlSetPowerSaveSettingV2, "powerSave");

// ---- Input ports and their signals ----------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedInputPort, "inputPort");
COUNT(DmCtrlGetInputPortCount, "inputPort", "value");
GET_LIST(DmCtrlGetInputPorts, "inputPort");
SET_LIST(DmCtrlSetInputPorts, "inputPort");

SUPPORTS(DmCtrlSupportedInputAuto, "inputAuto");
GET(DmCtrlGetInputAuto, "inputAuto");
SET(DmCtrlSetInputAuto, "inputAuto");

SUPPORTS(DmCtrlSupportedInputPortInterlockedWithUSBSelection, "inputPortOfUSB");
MEMBER(DmCtrlGetOutputSegmentCount, "inputPortOfUSB", "segments");
DmResult DmCtrlGetInputPortInterlockedWithUSBSelection(const char* serial, const char* product, uint32_t usbSelection,
                                                       uint32_t* ports, uint32_t count) {
    return MonitorCall(__func__, serial, product, {usbSelection})
        .get("inputPortOfUSB", Output::list(ports, count), usbSelection);
}
SET_LIST_AT(DmCtrlSetInputPortInterlockedWithUSBSelection, "inputPortOfUSB", byNumber);

SUPPORTS(DmCtrlSupportedInputSignalMode, "inputSignalMode");
GET(DmCtrlGetInputSignalMode, "inputSignalMode");

SUPPORTS(DmCtrlSupportedRCSignalSelectSupportMode, "signalSelect");
GET(DmCtrlGetRCSignalSelectSupportMode, "signalSelect");
SET(DmCtrlSetRCSignalSelectSupportMode, "signalSelect");
SUPPORTS(DmCtrlSupportedRCSignalSelectSupportModeV2, "signalSelectV2");
GET(DmCtrlGetRCSignalSelectSupportModeV2, "signalSelectV2");
SET(DmCtrlSetRCSignalSelectSupportModeV2, "signalSelectV2");

SUPPORTS(DmCtrlSupportedSplitDisplayMode, "splitDisplayMode");
GET(DmCtrlGetSplitDisplayMode, "splitDisplayMode");

// A monitor that measures one port at a time measures the selected one, whatever port it is asked about.
namespace {

DmResult readSignal(const char* function, const char* serial, const char* product, uint32_t inputPort,
                    const char* setting, const Output& output) {
    return MonitorCall(function, serial, product, {inputPort})
        .run(setting,
             [&](Monitor& monitor) {
                 const auto measured = monitor.selectedPort.value_or(inputPort);
                 return monitor.settings.read(setting, measured);
             },
             {output});
}

}  // namespace

DmResult DmCtrlGetSignalInformation(const char* serial, const char* product, uint32_t inputPort,
                                    DmSignalInformation* information) {
    return readSignal(__func__, serial, product, inputPort, "signal", information);
}
DmResult DmCtrlGetSignalResolution(const char* serial, const char* product, uint32_t inputPort,
                                   DmSignalResolution* resolution) {
    return readSignal(__func__, serial, product, inputPort, "signalResolution", resolution);
}
DmResult DmCtrlGetSignalInfoFrame(const char* serial, const char* product, uint32_t inputPort,
                                  DmSignalInfoFrame* frame) {
    return readSignal(__func__, serial, product, inputPort, "signalInfoFrame", frame);
}
SUPPORTS(DmCtrlSupportedTargetSelection, "targetSelection");
DmResult DmCtrlSetTargetSelectionInputPort(const char* serial, const char* product, uint32_t inputPort) {
    return MonitorCall(__func__, serial, product, {inputPort}).run("targetSelection", [&](Monitor& monitor) {
        monitor.selectedPort = inputPort;
        return result::success;
    });
}

// ---- USB and KVM: while the KVM switch follows the input, no upstream port can be selected --------------------------

namespace {

/// The value of "followsInput" of the KVM setting.
bool followsInput(Monitor& monitor) {
    return monitor.supports("kvm") &&
           monitor.settings.at("kvm").at("value") == monitor.settings.at("kvm").at("followsInput");
}

}  // namespace

SUPPORTS(DmCtrlSupportedUSBSelection, "usbSelection");
GET(DmCtrlGetUSBSelection, "usbSelection");
DmResult DmCtrlSetUSBSelection(const char* serial, const char* product, uint32_t port) {
    return MonitorCall(__func__, serial, product, {port}).run("usbSelection", [&](Monitor& monitor) -> Answer {
        if (followsInput(monitor)) return result::invalidPrecondition;
        return monitor.settings.write("usbSelection", port);
    });
}
SUPPORTS(DmCtrlSupportedUSBSelectionActive, "usbSelectionActive");
DmResult DmCtrlGetUSBSelectionActive(const char* serial, const char* product, uint32_t* port) {
    return MonitorCall(__func__, serial, product)
        .run("usbSelectionActive",
             [](Monitor& monitor) {
                 if (!followsInput(monitor)) return monitor.settings.read("usbSelection");
                 const auto input = monitor.settings.at("inputPort").at("value").at(0).get<std::uint32_t>();
                 return monitor.settings.read("usbSelectionActive", input);
             },
             {port});
}

COUNT(DmCtrlGetUSBCAltModePortCount, "usbCAltModePort", "value");
GET_LIST(DmCtrlGetUSBCAltModePort, "usbCAltModePort");

SUPPORTS(DmCtrlSupportedUSBPowerSave, "usbPowerSave");
GET(DmCtrlGetUSBPowerSave, "usbPowerSave");
SET(DmCtrlSetUSBPowerSave, "usbPowerSave");

SUPPORTS(DmCtrlSupportedUSBPowerDelivery, "usbPowerDelivery");
GET(DmCtrlGetUSBPowerDelivery, "usbPowerDelivery");

SUPPORTS(DmCtrlSupportedKVMSetting, "kvm");
SUPPORTS(DmCtrlSupportedKVMSettingV2, "kvmV2");
GET(DmCtrlGetKVMSettingV2, "kvm");
SET(DmCtrlSetKVMSettingV2, "kvm");

// ---- Keys and the indicator -----------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedKeyLockSetting, "keyLock");
SUPPORTS(DmCtrlSupportedAllKeyLock, "allKeyLock");
DmResult DmCtrlGetKeyLockState(const char* serial, const char* product, uint32_t* state) {
    return MonitorCall(__func__, serial, product)
        .run("keyLock",
             [](Monitor& monitor) {
                 return monitor.keysLockedUntil > simulator::now() ? answer({std::uint32_t{1}})
                                                                   : monitor.settings.read("keyLock");
             },
             {state});
}
SET(DmCtrlSetKeyLockState, "keyLock");
DmResult DmCtrlSetTimeoutKeyLock(const char* serial, const char* product, uint16_t timeout) {
    return MonitorCall(__func__, serial, product, {timeout}).run("keyLock", [&](Monitor& monitor) {
        monitor.keysLockedUntil = simulator::now() + std::chrono::seconds(timeout);
        return result::success;
    });
}

SUPPORTS(DmCtrlSupportedVirtualKey, "virtualKey");
LIST(DmCtrlEnumVirtualKey, "virtualKey", "of");
DmResult DmCtrlSetVirtualKey(const char* serial, const char* product, uint32_t key) {
    return MonitorCall(__func__, serial, product, {key}).run("virtualKey", [&](Monitor& monitor) -> Answer {
        const bool locked = monitor.settings.number("keyLock") != 0 || monitor.keysLockedUntil > simulator::now();
        if (locked) return result::disabled;
        return monitor.settings.write("virtualKey", key);
    });
}

DmResult DmCtrlShowIndicatorOSD(const char* serial, const char* product, uint32_t position) {
    return MonitorCall(__func__, serial, product, {position}).succeed("osdIndicator");
}
DmResult DmCtrlHideIndicatorOSD(const char* serial, const char* product, uint32_t keyLockState) {
    return MonitorCall(__func__, serial, product, {keyLockState}).run("osdIndicator", [&](Monitor& monitor) {
        return monitor.settings.write("keyLock", keyLockState);
    });
}

// ---- Energy saving --------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedBrightRegulator, "brightRegulator");
GET(DmCtrlGetBrightRegulator, "brightRegulator");
SET(DmCtrlSetBrightRegulator, "brightRegulator");

SUPPORTS(DmCtrlSupportedAutoLumisaveSettings, "autoLumisaveSettings");
MEMBERS(DmCtrlGetAutoLumisaveAmbientLightRange, "autoLumisaveSettings", "darkest", "brightest");
GET(DmCtrlGetAutoLumisaveSettings, "autoLumisaveSettings");
SET(DmCtrlSetAutoLumisaveSettings, "autoLumisaveSettings");

// It can be adjusted while it is on.
SUPPORTS(DmCtrlSupportedLumisaveOptimizer, "lumisaveOptimizer");
GET(DmCtrlGetLumisaveOptimizerEnable, "lumisaveOptimizer");
GET(DmCtrlGetLumisaveOptimizerStatus, "lumisaveOptimizer");
SET(DmCtrlSetLumisaveOptimizerEnable, "lumisaveOptimizer");

SUPPORTS(DmCtrlSupportedLumisaveSense, "lumisaveSense");
SUPPORTS(DmCtrlSupportedLumisaveSenseV2, "lumisaveSenseV2");
GET(DmCtrlGetLumisaveSenseV2, "lumisaveSense");
SET(DmCtrlSetLumisaveSenseV2, "lumisaveSense");
SUPPORTS(DmCtrlSupportedLumisaveSenseLevel, "lumisaveSenseLevel");
GET(DmCtrlGetLumisaveSenseLevel, "lumisaveSenseLevel");
SET(DmCtrlSetLumisaveSenseLevel, "lumisaveSenseLevel");
SUPPORTS(DmCtrlSupportedLumisaveSenseSensitivity, "lumisaveSenseSensitivity");
GET(DmCtrlGetLumisaveSenseSensitivity, "lumisaveSenseSensitivity");
SET(DmCtrlSetLumisaveSenseSensitivity, "lumisaveSenseSensitivity");
SUPPORTS(DmCtrlSupportedLumisaveSenseControl, "lumisaveSenseControl");
GET(DmCtrlGetLumisaveSenseControl, "lumisaveSenseControl");
SET(DmCtrlSetLumisaveSenseControl, "lumisaveSenseControl");
SUPPORTS(DmCtrlSupportedLumisaveSenseTimeIndex, "lumisaveSenseTime");
GET(DmCtrlGetLumisaveSenseTimeIndex, "lumisaveSenseTime");
SET(DmCtrlSetLumisaveSenseTimeIndex, "lumisaveSenseTime");
SUPPORTS(DmCtrlSupportedLumisaveSensePowerState, "lumisaveSensePowerState");
GET(DmCtrlGetLumisaveSensePowerState, "lumisaveSensePowerState");

// ---- Backlight and wall light ---------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedBackLight, "backlight");
GET(DmCtrlGetBackLightState, "backlight");
SET(DmCtrlSetBackLightState, "backlight");
SUPPORTS(DmCtrlSupportedBackLightLightingTime, "backlightTime");
GET(DmCtrlGetBackLightLightingTime, "backlightTime");
SUPPORTS(DmCtrlSupportedBacklightReplaceInfo, "backlightReplaceInfo");
GET(DmCtrlGetBacklightReplaceInfo, "backlightReplaceInfo");

SUPPORTS(DmCtrlSupportedInstantBacklightBooster, "booster");
GET(DmCtrlGetInstantBacklightBooster, "booster");

// What it has been used counts from the moment it is switched on.
DmResult DmCtrlSetInstantBacklightBooster(const char* serial, const char* product, const DmBacklightBooster* booster) {
    return MonitorCall(__func__, serial, product, {booster}).run("booster", [&](Monitor& monitor) -> Answer {
        const bool wasOn = monitor.settings.at("booster").at("value").at("mode") != 0;
        auto written = monitor.settings.write("booster", booster);
        if (written.result.failed()) return written;
        const bool isOn = booster->mode != 0;
        monitor.settings.at("booster").at("value")["status"] = isOn ? 1 : 0;
        if (isOn && !wasOn) monitor.boostedSince = simulator::now();
        if (!isOn && wasOn) monitor.boosted += simulator::now() - monitor.boostedSince;
        return written;
    });
}
DmResult DmCtrlGetInstantBacklightBoosterUsageTime(const char* serial, const char* product, DmBoosterUsageTime* time) {
    return MonitorCall(__func__, serial, product)
        .run("booster",
             [](Monitor& monitor) {
                 auto used = monitor.boosted;
                 if (monitor.settings.at("booster").at("value").at("mode") != 0)
                     used += simulator::now() - monitor.boostedSince;
                 const auto seconds = monitor.settings.at("booster").at("usedSeconds").get<std::int64_t>() +
                                      std::chrono::duration_cast<std::chrono::seconds>(used).count();
                 return Answer(Json::array(
                     {{{"hours", seconds / 3600}, {"minutes", seconds / 60 % 60}, {"seconds", seconds % 60}}}));
             },
             {time});
}

SUPPORTS(DmCtrlSupportedWallLightStatus, "wallLight");
GET(DmCtrlGetWallLightStatus, "wallLight");
SET(DmCtrlSetWallLightStatus, "wallLight");
SUPPORTS(DmCtrlSupportedWallLightBrightness, "wallLightBrightness");
RANGE(DmCtrlGetRangeWallLightBrightness, "wallLightBrightness");
GET(DmCtrlGetWallLightBrightness, "wallLightBrightness");
SET(DmCtrlSetWallLightBrightness, "wallLightBrightness");

// ---- Identity -------------------------------------------------------------------------------------------------------

// Follows the firmware that runs, so that an update shows here, too.
SUPPORTS(DmCtrlSupportedFirmwareVersion, "firmwareVersion");
DmResult DmCtrlGetFirmwareVersion(const char* serial, const char* product, DmFirmwareVersion* version) {
    return MonitorCall(__func__, serial, product)
        .run("firmwareVersion",
             [](Monitor& monitor) {
                 const auto& runs = monitor.firmware.version;
                 return Answer(Json::array(
                     {{{"system", runs.system}, {"controller", runs.controller}, {"frontEnd", runs.frontEnd}}}));
             },
             {version});
}

COUNT(DmCtrlGetOSDDisplayFirmwareVersionsCount, "displayFirmwareVersions", "value");
GET_LIST(DmCtrlGetOSDDisplayFirmwareVersions, "displayFirmwareVersions");
MEMBER(DmCtrlGetOSDDisplayFirmwareVersionsStringSize, "displayFirmwareVersionsText", "size");
GET_TEXT(DmCtrlGetOSDDisplayFirmwareVersionsString, "displayFirmwareVersionsText");

SUPPORTS(DmCtrlSupportedAssetTag, "assetTag");
MEMBER(DmCtrlGetAssetTagSize, "assetTag", "size");
GET_TEXT(DmCtrlGetAssetTag, "assetTag");
SET(DmCtrlSetAssetTag, "assetTag");
GET(DmCtrlGetEnableAssetTag, "assetTagEnabled");
SET(DmCtrlSetEnableAssetTag, "assetTagEnabled");

SUPPORTS(DmCtrlSupportedUDI, "udi");
MEMBER(DmCtrlGetUDISize, "udi", "size");
GET_TEXT(DmCtrlGetUDI, "udi");
SET(DmCtrlSetUDI, "udi");

SUPPORTS(DmCtrlSupportedUsageTime, "usageTime");
GET(DmCtrlGetUsageTime, "usageTime");

// ---- Screen layout --------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedLayout, "layout");
COUNT(DmCtrlGetLayoutCount, "layout", "of");
GET(DmCtrlGetLayout, "layout");
SET(DmCtrlSetLayout, "layout");

SUPPORTS(DmCtrlSupportedQVPbyPLayout, "qvPbyPLayout");
GET(DmCtrlGetQVPbyPLayout, "qvPbyPLayout");
SET(DmCtrlSetQVPbyPLayout, "qvPbyPLayout");
SUPPORTS(DmCtrlSupportedQVActiveWindow, "qvActiveWindow");
GET(DmCtrlGetQVActiveWindow, "qvActiveWindow");
SET(DmCtrlSetQVActiveWindow, "qvActiveWindow");
SUPPORTS(DmCtrlSupportedEnableWholeWindowColorSetting, "wholeWindowColor");
GET(DmCtrlGetEnableWholeWindowColorSetting, "wholeWindowColor");
SET(DmCtrlSetEnableWholeWindowColorSetting, "wholeWindowColor");
