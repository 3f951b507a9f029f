// Brightness, contrast, hue, saturation, lightness, luminance; single values; patterns; the panel.
#include <records/picture.h>

#include "simulator/libdmc/Functions.h"

using simulator::MonitorCall;

// ---- Brightness and contrast ----------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedBrightness, "brightness");
RANGE(DmCtrlGetRangeBrightnessForStep, "brightness");
GET(DmCtrlGetBrightnessForStep, "brightness");
SET(DmCtrlSetBrightnessForStep, "brightness");
DmResult DmCtrlGetBrightnessForPercentage(const char* serial, const char* product, double* percentage) {
    return MonitorCall(__func__, serial, product).getPercentage("brightness", percentage);
}
DmResult DmCtrlSetBrightnessForPercentage(const char* serial, const char* product, double percentage) {
    return MonitorCall(__func__, serial, product, {percentage}).setPercentage("brightness", percentage);
}

SUPPORTS(DmCtrlSupportedContrast, "contrast");
RANGE(DmCtrlGetRangeContrastForStep, "contrast");
GET(DmCtrlGetContrastForStep, "contrast");
SET(DmCtrlSetContrastForStep, "contrast");
DmResult DmCtrlGetContrastForPercentage(const char* serial, const char* product, double* percentage) {
    return MonitorCall(__func__, serial, product).getPercentage("contrast", percentage);
}
DmResult DmCtrlSetContrastForPercentage(const char* serial, const char* product, double percentage) {
    return MonitorCall(__func__, serial, product, {percentage}).setPercentage("contrast", percentage);
}

// ---- Hue, saturation, lightness -------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupported6ColorsHue, "hue");
RANGE(DmCtrlGetRange6ColorsHue, "hue");
GET(DmCtrlGet6ColorsHue, "hue");
SET(DmCtrlSet6ColorsHue, "hue");

SUPPORTS(DmCtrlSupported6ColorsSaturation, "saturation");
RANGE(DmCtrlGetRange6ColorsSaturation, "saturation");
GET(DmCtrlGet6ColorsSaturation, "saturation");
SET(DmCtrlSet6ColorsSaturation, "saturation");

RANGE(DmCtrlGetRange6ColorsHue2, "sixColorsHue");
GET(DmCtrlGet6ColorsAllHue2, "sixColorsHue");
SET_PART(DmCtrlSetRedHue2, "sixColorsHue", "red");
SET_PART(DmCtrlSetGreenHue2, "sixColorsHue", "green");
SET_PART(DmCtrlSetBlueHue2, "sixColorsHue", "blue");
SET_PART(DmCtrlSetCyanHue2, "sixColorsHue", "cyan");
SET_PART(DmCtrlSetMagentaHue2, "sixColorsHue", "magenta");
SET_PART(DmCtrlSetYellowHue2, "sixColorsHue", "yellow");

RANGE(DmCtrlGetRange6ColorsSaturation2, "sixColorsSaturation");
GET(DmCtrlGet6ColorsAllSaturation2, "sixColorsSaturation");
SET_PART(DmCtrlSetRedSaturation2, "sixColorsSaturation", "red");
SET_PART(DmCtrlSetGreenSaturation2, "sixColorsSaturation", "green");
SET_PART(DmCtrlSetBlueSaturation2, "sixColorsSaturation", "blue");
SET_PART(DmCtrlSetCyanSaturation2, "sixColorsSaturation", "cyan");
SET_PART(DmCtrlSetMagentaSaturation2, "sixColorsSaturation", "magenta");
SET_PART(DmCtrlSetYellowSaturation2, "sixColorsSaturation", "yellow");

SUPPORTS(DmCtrlSupported6ColorsLightness, "sixColorsLightness");
RANGE(DmCtrlGetRange6ColorsLightness, "sixColorsLightness");
GET(DmCtrlGet6ColorsAllLightness, "sixColorsLightness");
SET(DmCtrlSet6ColorsAllLightness, "sixColorsLightness");

// ---- Luminance in cd/m2: of its own, brightness does not follow it --------------------------------------------------

SUPPORTS(DmCtrlSupportedCandela, "candela");
SET(DmCtrlSetCandela, "candela");
MEMBERS(DmCtrlGetCandela, "candela", "value", "status");
DmResult DmCtrlGetCandelaParam(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum,
                               uint32_t* step) {
    return MonitorCall(__func__, serial, product).members("candela", {"min", "max", "step"}, {minimum, maximum, step});
}

// ---- Single values --------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedRangeExtension, "rangeExtension");
GET(DmCtrlGetRangeExtension, "rangeExtension");
SET(DmCtrlSetRangeExtension, "rangeExtension");

SUPPORTS(DmCtrlSupportedRangeExtensionSetting, "rangeExtensionSetting");
GET(DmCtrlGetRangeExtensionSetting, "rangeExtensionSetting");
SET(DmCtrlSetRangeExtensionSetting, "rangeExtensionSetting");

SUPPORTS(DmCtrlSupportedLimited109Setting, "limited109");
GET(DmCtrlGetLimited109Setting, "limited109");
SET(DmCtrlSetLimited109Setting, "limited109");

SUPPORTS(DmCtrlSupportedLuminanceWarning, "luminanceWarning");
GET(DmCtrlGetLuminanceWarning, "luminanceWarning");
SET(DmCtrlSetLuminanceWarning, "luminanceWarning");

SUPPORTS(DmCtrlSupportedMonochromeConversion, "monochromeConversion");
GET(DmCtrlGetMonochromeConversion, "monochromeConversion");
SET(DmCtrlSetMonochromeConversion, "monochromeConversion");

SUPPORTS(DmCtrlSupportedDUETCStatus, "duetc");
GET(DmCtrlGetDUETCStatus, "duetc");
SET(DmCtrlSetDUETCStatus, "duetc");

SUPPORTS(DmCtrlSupportedUniformityEnable, "uniformity");
GET(DmCtrlGetUniformityEnable, "uniformity");
SET(DmCtrlSetUniformityEnable, "uniformity");

SUPPORTS(DmCtrlSupportedCompatibilityMode, "compatibilityMode");
GET(DmCtrlGetCompatibilityMode, "compatibilityMode");
SET(DmCtrlSetCompatibilityMode, "compatibilityMode");

SUPPORTS(DmCtrlSupportedQuickCheck, "quickCheck");
GET(DmCtrlGetQuickCheck, "quickCheck");
SET(DmCtrlSetQuickCheck, "quickCheck");

// ---- Patterns on the screen: there is nobody to see them ------------------------------------------------------------

SUPPORTS(DmCtrlSupportedColorPatch, "colorPatch");
SET(DmCtrlShowColorPatch, "colorPatch");
SUCCEED(DmCtrlHideColorPatch, "colorPatch");

SUPPORTS(DmCtrlSupportedCenterCrossMarker, "centerCrossMarker");
SUCCEED(DmCtrlShowCenterCrossMarker, "centerCrossMarker");
SUCCEED(DmCtrlHideCenterCrossMarker, "centerCrossMarker");

// ---- What the monitor tells of its panel ----------------------------------------------------------------------------

GET(DmCtrlProfGetData, "profileData");

SUPPORTS(DmCtrlSupportedFactoryPanelLuminance, "factoryPanelLuminance");
GET(DmCtrlGetFactoryPanelLuminance, "factoryPanelLuminance");

SUPPORTS(DmCtrlSupportedDimmerOut, "dimmerOut");
GET(DmCtrlGetDimmerOut, "dimmerOut");

GET(DmCtrlGetPanelType, "panelType");
GET(DmCtrlGetPanelRevision, "panelRevision");

SUPPORTS(DmCtrlSupportedOutsidePhotoSensorAD, "outsidePhotoSensorAD");
RANGE(DmCtrlGetRangeOutsidePhotoSensorAD, "outsidePhotoSensorAD");
GET(DmCtrlGetOutsidePhotoSensorAD, "outsidePhotoSensorAD");
