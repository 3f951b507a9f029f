/* libdmc: power, inputs, USB, keys, energy saving, backlight, identity and layout. Codes are the library's own. */
#ifndef PELL_COMPANIONS_LIBDMC_DEVICE_H
#define PELL_COMPANIONS_LIBDMC_DEVICE_H

#include <libdmc/result.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---------------------------------------------------------------------------------------------------- */

/* One direction of a signal's timing: the frequency in hertz, and how it is synchronised. */
typedef struct DmSignalSync {
    double frequency;
    uint32_t syncPolarity;
    uint32_t syncStatus;
} DmSignalSync;

/* The timing of a signal; the `is...` members are 0 or 1. */
typedef struct DmSignalInformation {
    DmSignalSync horizontal;
    DmSignalSync vertical;
    uint32_t scanType;
    uint32_t isSyncOnGreen;
    uint32_t isComposite;
    uint32_t isDualLink;
    uint32_t isDigital;
} DmSignalInformation;

/* In pixels. */
typedef struct DmSignalResolution {
    uint32_t horizontal;
    uint32_t vertical;
} DmSignalResolution;

typedef struct DmSignalInfoFrame {
    uint32_t inputRange;
    uint32_t colorDepth;
    uint32_t colorFormat;
    uint32_t colorimetry;
    uint32_t eotf;
} DmSignalInfoFrame;

/* A point of the curve from ambient light (in lux, and as a level of the sensor) to brightness (a step). */
typedef struct DmAutoLumisavePoint {
    uint32_t brightness;
    uint32_t ambientLight;
    uint32_t ambientLightLevel;
} DmAutoLumisavePoint;

/* `isAdjustableBrightness` is 0 or 1. */
typedef struct DmAutoLumisaveSettings {
    DmAutoLumisavePoint maxPoint;
    DmAutoLumisavePoint minPoint;
    DmAutoLumisavePoint inflectionPoint;
    uint32_t adjustMarginBrightness;
    uint32_t isAdjustableBrightness;
} DmAutoLumisaveSettings;

typedef struct DmYearMonth {
    uint32_t year;
    uint32_t month;
} DmYearMonth;

/* Times in hours. */
typedef struct DmBacklightReplaceInfo {
    uint32_t usageTime;
    uint32_t deprecatedTime;
    uint32_t replacedTime;
    DmYearMonth replacedDate;
} DmBacklightReplaceInfo;

/* Luminance in cd/m2, colour temperature in kelvin. */
typedef struct DmBoosterTarget {
    double Lmax;
    double Lmin;
    uint32_t colorTemperature;
    uint32_t displayFunction;
} DmBoosterTarget;

/* `mode` 0 is off. */
typedef struct DmBacklightBooster {
    uint32_t status;
    uint32_t mode;
    DmBoosterTarget target;
} DmBacklightBooster;

typedef struct DmBoosterUsageTime {
    uint32_t hours;
    uint32_t minutes;
    uint32_t seconds;
} DmBoosterUsageTime;

typedef struct DmFirmwareVersion {
    uint32_t system;
    uint32_t controller;
    uint32_t frontEnd;
} DmFirmwareVersion;

/* The sizes of a display device's texts in bytes. A text ends at its first NUL, or at the end of its field. */
#define DM_DEVICE_NAME_SIZE 32
#define DM_DEVICE_VERSION_SIZE 32

typedef struct DmDisplayFirmwareVersion {
    char deviceName[DM_DEVICE_NAME_SIZE];
    char version[DM_DEVICE_VERSION_SIZE];
} DmDisplayFirmwareVersion;

typedef struct DmUsageTime {
    uint32_t hour;
    uint32_t minute;
} DmUsageTime;

/* ---- Power ------------------------------------------------------------------------------------------------------- */

/* 1 is on, 0 is off. */
int32_t DmCtrlSupportedPower(const char* serial, const char* product);
DmResult DmCtrlGetPower(const char* serial, const char* product, uint32_t* power);
DmResult DmCtrlSetPower(const char* serial, const char* product, uint32_t power);

/* Newer versions only. */
int32_t DmCtrlSupportedPowerLED(const char* serial, const char* product);
DmResult DmCtrlGetRangePowerLED(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGetPowerLED(const char* serial, const char* product, uint32_t* level);
DmResult DmCtrlSetPowerLED(const char* serial, const char* product, uint32_t level);

/* Newer versions only. The first tells whether power saving can be set at all, the V2 whether it can be set to low. */
int32_t DmCtrlSupportedPowerSaveSetting(const char* serial, const char* product);
int32_t DmCtrlSupportedPowerSaveSettingV2(const char* serial, const char* product);
DmResult DmCtrlGetPowerSaveSettingV2(const char* serial, const char* product, uint32_t* setting);
DmResult DmCtrlSetPowerSaveSettingV2(const char* serial, const char* product, uint32_t setting);

/* ---- Input ports and their signals ------------------------------------------------------------------------------- */

/* One port, or several for a split screen. The count is that of the ports that are shown now. */
int32_t DmCtrlSupportedInputPort(const char* serial, const char* product);
DmResult DmCtrlGetInputPortCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetInputPorts(const char* serial, const char* product, uint32_t* ports, uint32_t count);
DmResult DmCtrlSetInputPorts(const char* serial, const char* product, const uint32_t* ports, uint32_t count);

/* Newer versions only: whether the monitor chooses the port that has a signal; 0 or 1. */
int32_t DmCtrlSupportedInputAuto(const char* serial, const char* product);
DmResult DmCtrlGetInputAuto(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetInputAuto(const char* serial, const char* product, uint32_t enabled);

/* Newer versions only: the input ports that go with an upstream USB port, one for each segment of the screen. */
int32_t DmCtrlSupportedInputPortInterlockedWithUSBSelection(const char* serial, const char* product);
DmResult DmCtrlGetOutputSegmentCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetInputPortInterlockedWithUSBSelection(const char* serial, const char* product, uint32_t usbSelection,
                                                       uint32_t* ports, uint32_t count);
DmResult DmCtrlSetInputPortInterlockedWithUSBSelection(const char* serial, const char* product, uint32_t usbSelection,
                                                       const uint32_t* ports, uint32_t count);

int32_t DmCtrlSupportedInputSignalMode(const char* serial, const char* product);
DmResult DmCtrlGetInputSignalMode(const char* serial, const char* product, uint32_t* mode);

/* Newer versions only, and the V2 still newer ones: the older mode is 0 or 1, the V2 a number. */
int32_t DmCtrlSupportedRCSignalSelectSupportMode(const char* serial, const char* product);
DmResult DmCtrlGetRCSignalSelectSupportMode(const char* serial, const char* product, uint32_t* mode);
DmResult DmCtrlSetRCSignalSelectSupportMode(const char* serial, const char* product, uint32_t mode);
int32_t DmCtrlSupportedRCSignalSelectSupportModeV2(const char* serial, const char* product);
DmResult DmCtrlGetRCSignalSelectSupportModeV2(const char* serial, const char* product, uint32_t* mode);
DmResult DmCtrlSetRCSignalSelectSupportModeV2(const char* serial, const char* product, uint32_t mode);

/* Newer versions only. There is no function that sets it. */
int32_t DmCtrlSupportedSplitDisplayMode(const char* serial, const char* product);
DmResult DmCtrlGetSplitDisplayMode(const char* serial, const char* product, uint32_t* mode);

/* Newer versions only: the signal at an input port. Some monitors measure the port that was selected before. */
DmResult DmCtrlGetSignalInformation(const char* serial, const char* product, uint32_t inputPort,
                                    DmSignalInformation* information);
DmResult DmCtrlGetSignalResolution(const char* serial, const char* product, uint32_t inputPort,
                                   DmSignalResolution* resolution);
DmResult DmCtrlGetSignalInfoFrame(const char* serial, const char* product, uint32_t inputPort,
                                  DmSignalInfoFrame* frame);
int32_t DmCtrlSupportedTargetSelection(const char* serial, const char* product);
DmResult DmCtrlSetTargetSelectionInputPort(const char* serial, const char* product, uint32_t inputPort);

/* ---- USB, KVM, keys and the indicator on the screen -------------------------------------------------------------- */

int32_t DmCtrlSupportedUSBSelection(const char* serial, const char* product);
DmResult DmCtrlGetUSBSelection(const char* serial, const char* product, uint32_t* port);
DmResult DmCtrlSetUSBSelection(const char* serial, const char* product, uint32_t port);
/* Newer versions only: the upstream port in use, which an automatic selection may have chosen. */
int32_t DmCtrlSupportedUSBSelectionActive(const char* serial, const char* product);
DmResult DmCtrlGetUSBSelectionActive(const char* serial, const char* product, uint32_t* port);

/* Newer versions only. */
DmResult DmCtrlGetUSBCAltModePortCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetUSBCAltModePort(const char* serial, const char* product, uint32_t* ports, uint32_t count);

int32_t DmCtrlSupportedUSBPowerSave(const char* serial, const char* product);
DmResult DmCtrlGetUSBPowerSave(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetUSBPowerSave(const char* serial, const char* product, uint32_t enabled);

/* Newer versions only. */
int32_t DmCtrlSupportedUSBPowerDelivery(const char* serial, const char* product);
DmResult DmCtrlGetUSBPowerDelivery(const char* serial, const char* product, uint32_t* setting);

/* Newer versions only; the V2 is supported where there is more than one setting. */
int32_t DmCtrlSupportedKVMSetting(const char* serial, const char* product);
int32_t DmCtrlSupportedKVMSettingV2(const char* serial, const char* product);
DmResult DmCtrlGetKVMSettingV2(const char* serial, const char* product, uint32_t* setting);
DmResult DmCtrlSetKVMSettingV2(const char* serial, const char* product, uint32_t setting);

/* The timeout is in seconds. */
int32_t DmCtrlSupportedKeyLockSetting(const char* serial, const char* product);
int32_t DmCtrlSupportedAllKeyLock(const char* serial, const char* product);
DmResult DmCtrlGetKeyLockState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetKeyLockState(const char* serial, const char* product, uint32_t state);
DmResult DmCtrlSetTimeoutKeyLock(const char* serial, const char* product, uint16_t timeout);

int32_t DmCtrlSupportedVirtualKey(const char* serial, const char* product);
DmResult DmCtrlEnumVirtualKey(const char* serial, const char* product, uint32_t* keys, uint32_t* count);
DmResult DmCtrlSetVirtualKey(const char* serial, const char* product, uint32_t key);

DmResult DmCtrlShowIndicatorOSD(const char* serial, const char* product, uint32_t position);
DmResult DmCtrlHideIndicatorOSD(const char* serial, const char* product, uint32_t keyLockState);

/* ---- Energy saving ----------------------------------------------------------------------------------------------- */

/* 0 or 1. */
int32_t DmCtrlSupportedBrightRegulator(const char* serial, const char* product);
DmResult DmCtrlGetBrightRegulator(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetBrightRegulator(const char* serial, const char* product, uint32_t enabled);

/* All that follows of energy saving: newer versions only. */
int32_t DmCtrlSupportedAutoLumisaveSettings(const char* serial, const char* product);
DmResult DmCtrlGetAutoLumisaveAmbientLightRange(const char* serial, const char* product, uint32_t* minimum,
                                                uint32_t* maximum);
DmResult DmCtrlGetAutoLumisaveSettings(const char* serial, const char* product, DmAutoLumisaveSettings* settings);
DmResult DmCtrlSetAutoLumisaveSettings(const char* serial, const char* product, const DmAutoLumisaveSettings* settings);

/* The status is 1 while the optimizer can be adjusted. */
int32_t DmCtrlSupportedLumisaveOptimizer(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveOptimizerEnable(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlGetLumisaveOptimizerStatus(const char* serial, const char* product, uint32_t* status);
DmResult DmCtrlSetLumisaveOptimizerEnable(const char* serial, const char* product, uint32_t enabled);

/* The presence sensor. */
int32_t DmCtrlSupportedLumisaveSense(const char* serial, const char* product);
int32_t DmCtrlSupportedLumisaveSenseV2(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveSenseV2(const char* serial, const char* product, uint32_t* sense);
DmResult DmCtrlSetLumisaveSenseV2(const char* serial, const char* product, uint32_t sense);
int32_t DmCtrlSupportedLumisaveSenseLevel(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveSenseLevel(const char* serial, const char* product, uint32_t* level);
DmResult DmCtrlSetLumisaveSenseLevel(const char* serial, const char* product, uint32_t level);
int32_t DmCtrlSupportedLumisaveSenseSensitivity(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveSenseSensitivity(const char* serial, const char* product, uint32_t* sensitivity);
DmResult DmCtrlSetLumisaveSenseSensitivity(const char* serial, const char* product, uint32_t sensitivity);
int32_t DmCtrlSupportedLumisaveSenseControl(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveSenseControl(const char* serial, const char* product, uint32_t* control);
DmResult DmCtrlSetLumisaveSenseControl(const char* serial, const char* product, uint32_t control);
int32_t DmCtrlSupportedLumisaveSenseTimeIndex(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveSenseTimeIndex(const char* serial, const char* product, uint32_t* index);
DmResult DmCtrlSetLumisaveSenseTimeIndex(const char* serial, const char* product, uint32_t index);
int32_t DmCtrlSupportedLumisaveSensePowerState(const char* serial, const char* product);
DmResult DmCtrlGetLumisaveSensePowerState(const char* serial, const char* product, uint32_t* state);

/* ---- Backlight and wall light ------------------------------------------------------------------------------------ */

/* 0 or 1. */
int32_t DmCtrlSupportedBackLight(const char* serial, const char* product);
DmResult DmCtrlGetBackLightState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetBackLightState(const char* serial, const char* product, uint32_t state);

/* In hours. */
int32_t DmCtrlSupportedBackLightLightingTime(const char* serial, const char* product);
DmResult DmCtrlGetBackLightLightingTime(const char* serial, const char* product, uint32_t* hours);

/* All that follows: newer versions only. */
int32_t DmCtrlSupportedBacklightReplaceInfo(const char* serial, const char* product);
DmResult DmCtrlGetBacklightReplaceInfo(const char* serial, const char* product, DmBacklightReplaceInfo* information);

int32_t DmCtrlSupportedInstantBacklightBooster(const char* serial, const char* product);
DmResult DmCtrlGetInstantBacklightBooster(const char* serial, const char* product, DmBacklightBooster* booster);
DmResult DmCtrlSetInstantBacklightBooster(const char* serial, const char* product, const DmBacklightBooster* booster);
DmResult DmCtrlGetInstantBacklightBoosterUsageTime(const char* serial, const char* product, DmBoosterUsageTime* time);

int32_t DmCtrlSupportedWallLightStatus(const char* serial, const char* product);
DmResult DmCtrlGetWallLightStatus(const char* serial, const char* product, uint32_t* status);
DmResult DmCtrlSetWallLightStatus(const char* serial, const char* product, uint32_t status);
int32_t DmCtrlSupportedWallLightBrightness(const char* serial, const char* product);
DmResult DmCtrlGetRangeWallLightBrightness(const char* serial, const char* product, uint32_t* minimum,
                                           uint32_t* maximum);
DmResult DmCtrlGetWallLightBrightness(const char* serial, const char* product, uint32_t* brightness);
DmResult DmCtrlSetWallLightBrightness(const char* serial, const char* product, uint32_t brightness);

/* ---- Identity ---------------------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedFirmwareVersion(const char* serial, const char* product);
DmResult DmCtrlGetFirmwareVersion(const char* serial, const char* product, DmFirmwareVersion* version);

/* Newer versions only: of each display device, or all in one text. */
DmResult DmCtrlGetOSDDisplayFirmwareVersionsCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetOSDDisplayFirmwareVersions(const char* serial, const char* product,
                                             DmDisplayFirmwareVersion* versions, uint32_t count);
DmResult DmCtrlGetOSDDisplayFirmwareVersionsStringSize(const char* serial, const char* product, uint32_t* size);
DmResult DmCtrlGetOSDDisplayFirmwareVersionsString(const char* serial, const char* product, char* text, uint32_t size);

/* The size of a tag in bytes, its NUL included. This support function may fail; a success that is not 0 is support. */
DmResult DmCtrlSupportedAssetTag(const char* serial, const char* product);
DmResult DmCtrlGetAssetTagSize(const char* serial, const char* product, uint32_t* size);
DmResult DmCtrlGetAssetTag(const char* serial, const char* product, char* tag, uint32_t size);
DmResult DmCtrlSetAssetTag(const char* serial, const char* product, const char* tag);
DmResult DmCtrlGetEnableAssetTag(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetEnableAssetTag(const char* serial, const char* product, uint32_t enabled);

/* Newer versions only; the unique device identifier. As the asset tag. */
DmResult DmCtrlSupportedUDI(const char* serial, const char* product);
DmResult DmCtrlGetUDISize(const char* serial, const char* product, uint32_t* size);
DmResult DmCtrlGetUDI(const char* serial, const char* product, char* identifier, uint32_t size);
DmResult DmCtrlSetUDI(const char* serial, const char* product, const char* identifier);

int32_t DmCtrlSupportedUsageTime(const char* serial, const char* product);
DmResult DmCtrlGetUsageTime(const char* serial, const char* product, DmUsageTime* time);

/* ---- Screen layout ----------------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedLayout(const char* serial, const char* product);
DmResult DmCtrlGetLayoutCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetLayout(const char* serial, const char* product, uint32_t* layout);
DmResult DmCtrlSetLayout(const char* serial, const char* product, uint32_t layout);

/* Newer versions only. */
int32_t DmCtrlSupportedQVPbyPLayout(const char* serial, const char* product);
DmResult DmCtrlGetQVPbyPLayout(const char* serial, const char* product, uint32_t* layout);
DmResult DmCtrlSetQVPbyPLayout(const char* serial, const char* product, uint32_t layout);
int32_t DmCtrlSupportedQVActiveWindow(const char* serial, const char* product);
DmResult DmCtrlGetQVActiveWindow(const char* serial, const char* product, uint32_t* window);
DmResult DmCtrlSetQVActiveWindow(const char* serial, const char* product, uint32_t window);
int32_t DmCtrlSupportedEnableWholeWindowColorSetting(const char* serial, const char* product);
DmResult DmCtrlGetEnableWholeWindowColorSetting(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetEnableWholeWindowColorSetting(const char* serial, const char* product, uint32_t enabled);

#ifdef __cplusplus
}
#endif

#endif
