/* libdmc: picture adjustment. */
#ifndef PELL_COMPANIONS_LIBDMC_PICTURE_H
#define PELL_COMPANIONS_LIBDMC_PICTURE_H

#include <libdmc/color.h>
#include <libdmc/result.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---------------------------------------------------------------------------------------------------- */

typedef struct DmSixColors {
    uint32_t red;
    uint32_t green;
    uint32_t blue;
    uint32_t cyan;
    uint32_t magenta;
    uint32_t yellow;
} DmSixColors;

typedef struct DmPrimaries {
    DmChromaticity red;
    DmChromaticity green;
    DmChromaticity blue;
    DmChromaticity white;
} DmPrimaries;

/* What is kept of the panel for making profiles; the luminance in cd/m2. */
typedef struct DmProfileData {
    DmChromaticity red;
    DmChromaticity green;
    DmChromaticity blue;
    DmChromaticity white;
    DmChromaticity black;
    double luminance;
} DmProfileData;

/* Gains that make a colour temperature (in kelvin). */
typedef struct DmGainDefinition {
    uint32_t red;
    uint32_t green;
    uint32_t blue;
    uint32_t colorTemperature;
} DmGainDefinition;

/* Luminance of the panel as it left the factory, in cd/m2. */
typedef struct DmPanelLuminance {
    double red;
    double green;
    double blue;
    double white;
} DmPanelLuminance;

/* Drive levels of the three channels. */
typedef struct DmColor {
    uint32_t red;
    uint32_t green;
    uint32_t blue;
} DmColor;

/* A rectangle of the screen; `coordinate` says in which of the library's coordinate systems. */
typedef struct DmBounds {
    uint32_t coordinate;
    uint32_t x;
    uint32_t y;
    uint32_t width;
    uint32_t height;
} DmBounds;

typedef struct DmColorPatch {
    DmColor color;
    DmColor background;
    DmBounds bounds;
} DmColorPatch;

/* Colours as inputs. */
#define DM_COLOR_RED 0
#define DM_COLOR_GREEN 1
#define DM_COLOR_BLUE 2
#define DM_COLOR_WHITE 3

/* The status of a candela setting. */
#define DM_CANDELA_OK 0
#define DM_CANDELA_FAILED 1
#define DM_CANDELA_UNSUPPORTED 2

/* ---- Brightness and contrast: a step of the monitor's own range, or 0.0 to 100.0 per cent of it ---------------- */

int32_t DmCtrlSupportedBrightness(const char* serial, const char* product);
DmResult DmCtrlGetRangeBrightnessForStep(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGetBrightnessForPercentage(const char* serial, const char* product, double* percentage);
DmResult DmCtrlGetBrightnessForStep(const char* serial, const char* product, uint32_t* step);
DmResult DmCtrlSetBrightnessForPercentage(const char* serial, const char* product, double percentage);
DmResult DmCtrlSetBrightnessForStep(const char* serial, const char* product, uint32_t step);

int32_t DmCtrlSupportedContrast(const char* serial, const char* product);
DmResult DmCtrlGetRangeContrastForStep(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGetContrastForPercentage(const char* serial, const char* product, double* percentage);
DmResult DmCtrlGetContrastForStep(const char* serial, const char* product, uint32_t* step);
DmResult DmCtrlSetContrastForPercentage(const char* serial, const char* product, double percentage);
DmResult DmCtrlSetContrastForStep(const char* serial, const char* product, uint32_t step);

/* ---- Hue and saturation of the whole picture, in steps --------------------------------------------------------- */

int32_t DmCtrlSupported6ColorsHue(const char* serial, const char* product);
DmResult DmCtrlGetRange6ColorsHue(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGet6ColorsHue(const char* serial, const char* product, uint32_t* hue);
DmResult DmCtrlSet6ColorsHue(const char* serial, const char* product, uint32_t hue);

int32_t DmCtrlSupported6ColorsSaturation(const char* serial, const char* product);
DmResult DmCtrlGetRange6ColorsSaturation(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGet6ColorsSaturation(const char* serial, const char* product, uint32_t* saturation);
DmResult DmCtrlSet6ColorsSaturation(const char* serial, const char* product, uint32_t saturation);

/* ---- Hue, saturation and lightness of six colours, in steps ------------------------------------------------------ */

DmResult DmCtrlGetRange6ColorsHue2(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGet6ColorsAllHue2(const char* serial, const char* product, DmSixColors* colors);
DmResult DmCtrlSetRedHue2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetGreenHue2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetBlueHue2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetCyanHue2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetMagentaHue2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetYellowHue2(const char* serial, const char* product, uint32_t step);

DmResult DmCtrlGetRange6ColorsSaturation2(const char* serial, const char* product, uint32_t* minimum,
                                          uint32_t* maximum);
DmResult DmCtrlGet6ColorsAllSaturation2(const char* serial, const char* product, DmSixColors* colors);
DmResult DmCtrlSetRedSaturation2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetGreenSaturation2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetBlueSaturation2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetCyanSaturation2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetMagentaSaturation2(const char* serial, const char* product, uint32_t step);
DmResult DmCtrlSetYellowSaturation2(const char* serial, const char* product, uint32_t step);

int32_t DmCtrlSupported6ColorsLightness(const char* serial, const char* product);
DmResult DmCtrlGetRange6ColorsLightness(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGet6ColorsAllLightness(const char* serial, const char* product, DmSixColors* colors);
DmResult DmCtrlSet6ColorsAllLightness(const char* serial, const char* product, const DmSixColors* colors);

/* ---- Luminance in cd/m2 ------------------------------------------------------------------------------------------ */

int32_t DmCtrlSupportedCandela(const char* serial, const char* product);
DmResult DmCtrlGetCandelaParam(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum,
                               uint32_t* step);
/* The luminance that was set, and a DM_CANDELA_... status of reaching it. */
DmResult DmCtrlGetCandela(const char* serial, const char* product, uint32_t* candela, uint32_t* status);
DmResult DmCtrlSetCandela(const char* serial, const char* product, uint32_t candela);

/* ---- Chromaticities ---------------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedChromaticity(const char* serial, const char* product);
DmResult DmCtrlGetRangeChromaticity(const char* serial, const char* product, DmChromaticity* minimum,
                                    DmChromaticity* maximum);
DmResult DmCtrlGetRGBWChromaticities(const char* serial, const char* product, DmPrimaries* primaries);
/* `color` is a DM_COLOR_... */
DmResult DmCtrlGetChromaticity(const char* serial, const char* product, uint32_t color, DmChromaticity* chromaticity);
DmResult DmCtrlSetChromaticity(const char* serial, const char* product, uint32_t color,
                               const DmChromaticity* chromaticity);

int32_t DmCtrlSupportedSystemChromaticity(const char* serial, const char* product);
DmResult DmCtrlGetSystemChromaticity(const char* serial, const char* product, DmPrimaries* primaries);
DmResult DmCtrlSetSystemChromaticity(const char* serial, const char* product, const DmPrimaries* primaries);

/* ---- Colour matrices: nine numbers each, in row order ------------------------------------------------------------ */

int32_t DmCtrlSupportedColorMatrix(const char* serial, const char* product);
DmResult DmCtrlGetColorMatrixCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetColorMatrix(const char* serial, const char* product, uint32_t index, double* elements,
                              uint32_t* count);
DmResult DmCtrlSetColorMatrix(const char* serial, const char* product, uint32_t index, const double* elements,
                              uint32_t count);

/* ---- Colour temperature: in kelvin, or by the index of a preset -------------------------------------------------- */

int32_t DmCtrlSupportedColorTemperature(const char* serial, const char* product);
DmResult DmCtrlEnumColorTemperature(const char* serial, const char* product, uint32_t* kelvins, uint32_t* count);
DmResult DmCtrlGetColorTemperature(const char* serial, const char* product, uint32_t* kelvin);
DmResult DmCtrlSetColorTemperature(const char* serial, const char* product, uint32_t kelvin);

int32_t DmCtrlSupportedColorTemperatureIndex(const char* serial, const char* product);
DmResult DmCtrlEnumColorTemperatureIndex(const char* serial, const char* product, uint32_t* indices, uint32_t* count);
DmResult DmCtrlGetColorTemperatureIndex(const char* serial, const char* product, uint32_t* index);
DmResult DmCtrlSetColorTemperatureIndex(const char* serial, const char* product, uint32_t index);

/* ---- Fine contrast: picture modes by number, with names, and skipped or not by the mode key ---------------------- */

int32_t DmCtrlSupportedFineContrast(const char* serial, const char* product);
DmResult DmCtrlEnumFineContrast(const char* serial, const char* product, uint32_t* fineContrasts, uint32_t* count);
DmResult DmCtrlGetFineContrastCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetFineContrast(const char* serial, const char* product, uint32_t* fineContrast);
DmResult DmCtrlSetFineContrast(const char* serial, const char* product, uint32_t fineContrast);

/* A name has at most `size` bytes, its NUL included; the buffer of a name is of that size. */
DmResult DmCtrlGetFineContrastNameSize(const char* serial, const char* product, uint32_t* size);
DmResult DmCtrlGetFineContrastName(const char* serial, const char* product, uint32_t fineContrast, char* name,
                                   uint32_t size);
DmResult DmCtrlSetFineContrastName(const char* serial, const char* product, uint32_t fineContrast, const char* name);

int32_t DmCtrlSupportedFineContrastSkip(const char* serial, const char* product);
DmResult DmCtrlGetFineContrastSkip(const char* serial, const char* product, uint32_t fineContrast, uint32_t* skip);
DmResult DmCtrlSetFineContrastSkip(const char* serial, const char* product, uint32_t fineContrast, uint32_t skip);

/* Non-zero: the feature of that code works in that fine-contrast mode. */
int32_t DmCtrlSupportedFCFunction(const char* serial, const char* product, uint32_t fineContrast, uint32_t feature);

int32_t DmCtrlSupportedPinPFineContrast(const char* serial, const char* product);
DmResult DmCtrlGetPinPFineContrast(const char* serial, const char* product, uint32_t* fineContrast);
DmResult DmCtrlSetPinPFineContrast(const char* serial, const char* product, uint32_t fineContrast);

/* ---- Modes: 0 to count - 1, with names, and skipped or not by the mode key --------------------------------------- */

int32_t DmCtrlSupportedMode(const char* serial, const char* product);
DmResult DmCtrlGetModeCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetMode(const char* serial, const char* product, uint32_t* mode);
DmResult DmCtrlSetMode(const char* serial, const char* product, uint32_t mode);

DmResult DmCtrlGetModeNameSize(const char* serial, const char* product, uint32_t* size);
DmResult DmCtrlGetModeName(const char* serial, const char* product, uint32_t mode, char* name, uint32_t size);
DmResult DmCtrlSetModeName(const char* serial, const char* product, uint32_t mode, const char* name);

int32_t DmCtrlSupportedModeSkip(const char* serial, const char* product);
DmResult DmCtrlGetModeSkip(const char* serial, const char* product, uint32_t mode, uint32_t* skip);
DmResult DmCtrlSetModeSkip(const char* serial, const char* product, uint32_t mode, uint32_t skip);

/* What the settings that follow are about, when it is not the current mode. */
DmResult DmCtrlSetTargetSelectionMode(const char* serial, const char* product, uint32_t mode);

int32_t DmCtrlSupportedFlavor(const char* serial, const char* product);
DmResult DmCtrlGetFlavor(const char* serial, const char* product, uint32_t* flavor);
DmResult DmCtrlGetPresetFlavor(const char* serial, const char* product, uint32_t mode, uint32_t* flavor);
DmResult DmCtrlSetFlavor(const char* serial, const char* product, uint32_t flavor);

/* `type` and `index` are the library's own. */
DmResult DmCtrlSave(const char* serial, const char* product, uint32_t type);
DmResult DmCtrlSaveAtIndex(const char* serial, const char* product, uint32_t type, uint32_t index);
DmResult DmCtrlReset(const char* serial, const char* product, uint32_t type);
DmResult DmCtrlResetAtIndex(const char* serial, const char* product, uint32_t type, uint32_t index);

/* ---- Gain: `color` is DM_COLOR_RED, _GREEN or _BLUE -------------------------------------------------------------- */

int32_t DmCtrlSupportedGain(const char* serial, const char* product);
DmResult DmCtrlGetRangeGain(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGetGain(const char* serial, const char* product, uint32_t color, uint32_t* gain);
DmResult DmCtrlSetGain(const char* serial, const char* product, uint32_t color, uint32_t gain);

int32_t DmCtrlSupportedGainDefinition(const char* serial, const char* product);
DmResult DmCtrlGetGainDefinition(const char* serial, const char* product, DmGainDefinition* definition);

/* ---- Gamma and gamut --------------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedGammaIndex(const char* serial, const char* product);
DmResult DmCtrlEnumGammaIndex(const char* serial, const char* product, uint32_t* indices, uint32_t* count);
DmResult DmCtrlGetGammaIndex(const char* serial, const char* product, uint32_t* index);
DmResult DmCtrlSetGammaIndex(const char* serial, const char* product, uint32_t index);

int32_t DmCtrlSupportedGamutIndex(const char* serial, const char* product);
DmResult DmCtrlEnumGamutIndex(const char* serial, const char* product, uint32_t* indices, uint32_t* count);
DmResult DmCtrlGetGamutIndex(const char* serial, const char* product, uint32_t* index);
DmResult DmCtrlSetGamutIndex(const char* serial, const char* product, uint32_t index);

int32_t DmCtrlSupportedClipping(const char* serial, const char* product);
DmResult DmCtrlGetClipping(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetClipping(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedHLGSystemGamma(const char* serial, const char* product);
DmResult DmCtrlGetHLGSystemGammaEnable(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetHLGSystemGammaEnable(const char* serial, const char* product, uint32_t enabled);
DmResult DmCtrlGetHLGSystemGamma(const char* serial, const char* product, double* gamma);
DmResult DmCtrlSetHLGSystemGamma(const char* serial, const char* product, double gamma);

int32_t DmCtrlSupportedHLGSystemGammaClipping(const char* serial, const char* product);
DmResult DmCtrlGetHLGSystemGammaClipping(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetHLGSystemGammaClipping(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedHybridGammaPXL(const char* serial, const char* product);
DmResult DmCtrlGetHybridGammaPXL(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetHybridGammaPXL(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedGammaTCStatus(const char* serial, const char* product);
DmResult DmCtrlGetGammaTCStatus(const char* serial, const char* product, uint32_t* status);
DmResult DmCtrlSetGammaTCStatus(const char* serial, const char* product, uint32_t status);

/* ---- Look-up tables ---------------------------------------------------------------------------------------------- */

/* `depth` is 8 or 10 bits, `color` DM_COLOR_RED, _GREEN or _BLUE. */
int32_t DmCtrlSupportedLUT(const char* serial, const char* product);
int32_t DmCtrlSupportedLUT10bit(const char* serial, const char* product);
DmResult DmCtrlGetLUT(const char* serial, const char* product, uint32_t depth, uint32_t color, uint32_t* values,
                      uint32_t* count);
DmResult DmCtrlSetLUT(const char* serial, const char* product, uint32_t depth, uint32_t color, const uint32_t* values,
                      uint32_t count);

int32_t DmCtrlSupportedFrontLUT(const char* serial, const char* product);
DmResult DmCtrlGetFrontLUTMaxRawValue(const char* serial, const char* product, uint32_t* value);

int32_t DmCtrlSupportedLUTAData(const char* serial, const char* product);
DmResult DmCtrlGetLUTAData(const char* serial, const char* product, uint32_t color, uint32_t* values, uint32_t* count);
DmResult DmCtrlSetLUTAData(const char* serial, const char* product, uint32_t color, const uint32_t* values,
                           uint32_t count);

/* A table has one colour for each point of a grid whose edge has `GridCount` points at the `GridLevels`. */
int32_t DmCtrlSupported3DLUT(const char* serial, const char* product);
DmResult DmCtrlGet3DLUTGridCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGet3DLUTGridLevels(const char* serial, const char* product, uint32_t* levels, uint32_t* count);
DmResult DmCtrlGet3DLUTSelectionCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGet3DLUTSelection(const char* serial, const char* product, uint32_t* selection);
DmResult DmCtrlSet3DLUTSelection(const char* serial, const char* product, uint32_t selection);
DmResult DmCtrlEnable3DLUT(const char* serial, const char* product, uint32_t enabled);
DmResult DmCtrlGet3DLUTDirect(const char* serial, const char* product, DmColor* colors, uint32_t* count);
DmResult DmCtrlSet3DLUTDirect(const char* serial, const char* product, const DmColor* colors, uint32_t count);

int32_t DmCtrlSupportedMonoModelLUTSelect(const char* serial, const char* product);
DmResult DmCtrlGetMonoModelLUTSelect(const char* serial, const char* product, uint32_t* selection);
DmResult DmCtrlSetMonoModelLUTSelect(const char* serial, const char* product, uint32_t selection);

/* ---- Single values ----------------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedRangeExtension(const char* serial, const char* product);
DmResult DmCtrlGetRangeExtension(const char* serial, const char* product, uint32_t* status);
DmResult DmCtrlSetRangeExtension(const char* serial, const char* product, uint32_t status);

int32_t DmCtrlSupportedRangeExtensionSetting(const char* serial, const char* product);
DmResult DmCtrlGetRangeExtensionSetting(const char* serial, const char* product, uint32_t* setting);
DmResult DmCtrlSetRangeExtensionSetting(const char* serial, const char* product, uint32_t setting);

int32_t DmCtrlSupportedLimited109Setting(const char* serial, const char* product);
DmResult DmCtrlGetLimited109Setting(const char* serial, const char* product, uint32_t* setting);
DmResult DmCtrlSetLimited109Setting(const char* serial, const char* product, uint32_t setting);

int32_t DmCtrlSupportedLuminanceWarning(const char* serial, const char* product);
DmResult DmCtrlGetLuminanceWarning(const char* serial, const char* product, uint32_t* warning);
DmResult DmCtrlSetLuminanceWarning(const char* serial, const char* product, uint32_t warning);

int32_t DmCtrlSupportedMonochromeConversion(const char* serial, const char* product);
DmResult DmCtrlGetMonochromeConversion(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetMonochromeConversion(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedDUETCStatus(const char* serial, const char* product);
DmResult DmCtrlGetDUETCStatus(const char* serial, const char* product, uint32_t* status);
DmResult DmCtrlSetDUETCStatus(const char* serial, const char* product, uint32_t status);

int32_t DmCtrlSupportedUniformityEnable(const char* serial, const char* product);
DmResult DmCtrlGetUniformityEnable(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetUniformityEnable(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedCompatibilityMode(const char* serial, const char* product);
DmResult DmCtrlGetCompatibilityMode(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetCompatibilityMode(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedQuickCheck(const char* serial, const char* product);
DmResult DmCtrlGetQuickCheck(const char* serial, const char* product, uint32_t* check);
DmResult DmCtrlSetQuickCheck(const char* serial, const char* product, uint32_t check);

/* ---- Patterns on the screen -------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedColorPatch(const char* serial, const char* product);
DmResult DmCtrlShowColorPatch(const char* serial, const char* product, const DmColorPatch* patch);
DmResult DmCtrlHideColorPatch(const char* serial, const char* product);

int32_t DmCtrlSupportedCenterCrossMarker(const char* serial, const char* product);
DmResult DmCtrlShowCenterCrossMarker(const char* serial, const char* product);
DmResult DmCtrlHideCenterCrossMarker(const char* serial, const char* product);

/* ---- What is known of the panel ---------------------------------------------------------------------------- */

DmResult DmCtrlProfGetData(const char* serial, const char* product, DmProfileData* data);

int32_t DmCtrlSupportedFactoryPanelLuminance(const char* serial, const char* product);
DmResult DmCtrlGetFactoryPanelLuminance(const char* serial, const char* product, DmPanelLuminance* luminance);

int32_t DmCtrlSupportedDimmerOut(const char* serial, const char* product);
DmResult DmCtrlGetDimmerOut(const char* serial, const char* product, uint32_t* value);

DmResult DmCtrlGetPanelType(const char* serial, const char* product, uint32_t* type);
DmResult DmCtrlGetPanelRevision(const char* serial, const char* product, uint32_t* revision);

int32_t DmCtrlSupportedOutsidePhotoSensorAD(const char* serial, const char* product);
DmResult DmCtrlGetRangeOutsidePhotoSensorAD(const char* serial, const char* product, uint32_t* minimum,
                                            uint32_t* maximum);
DmResult DmCtrlGetOutsidePhotoSensorAD(const char* serial, const char* product, uint32_t* value);

#ifdef __cplusplus
}
#endif

#endif
