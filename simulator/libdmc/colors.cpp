// Chromaticities, colour temperature, gain, gamma and gamut.
#include <records/picture.h>

#include "simulator/libdmc/Functions.h"

using simulator::byColor;

// ---- Chromaticities -------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedChromaticity, "chromaticity");
RANGE(DmCtrlGetRangeChromaticity, "chromaticity");
GET(DmCtrlGetRGBWChromaticities, "chromaticity");
GET_AT(DmCtrlGetChromaticity, "chromaticity", byColor);
SET_AT(DmCtrlSetChromaticity, "chromaticity", byColor);

SUPPORTS(DmCtrlSupportedSystemChromaticity, "systemChromaticity");
GET(DmCtrlGetSystemChromaticity, "systemChromaticity");
SET(DmCtrlSetSystemChromaticity, "systemChromaticity");

// ---- Colour temperature: in kelvin and by index are two settings, neither follows the other -------------------------

SUPPORTS(DmCtrlSupportedColorTemperature, "colorTemperature");
LIST(DmCtrlEnumColorTemperature, "colorTemperature", "of");
GET(DmCtrlGetColorTemperature, "colorTemperature");
SET(DmCtrlSetColorTemperature, "colorTemperature");

SUPPORTS(DmCtrlSupportedColorTemperatureIndex, "colorTemperatureIndex");
LIST(DmCtrlEnumColorTemperatureIndex, "colorTemperatureIndex", "of");
GET(DmCtrlGetColorTemperatureIndex, "colorTemperatureIndex");
SET(DmCtrlSetColorTemperatureIndex, "colorTemperatureIndex");

// ---- Gain -----------------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedGain, "gain");
RANGE(DmCtrlGetRangeGain, "gain");
GET_AT(DmCtrlGetGain, "gain", byColor);
SET_AT(DmCtrlSetGain, "gain", byColor);

SUPPORTS(DmCtrlSupportedGainDefinition, "gainDefinition");
GET(DmCtrlGetGainDefinition, "gainDefinition");

// ---- Gamma and gamut ------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedGammaIndex, "gamma");
LIST(DmCtrlEnumGammaIndex, "gamma", "of");
GET(DmCtrlGetGammaIndex, "gamma");
SET(DmCtrlSetGammaIndex, "gamma");

SUPPORTS(DmCtrlSupportedGamutIndex, "gamut");
LIST(DmCtrlEnumGamutIndex, "gamut", "of");
GET(DmCtrlGetGamutIndex, "gamut");
SET(DmCtrlSetGamutIndex, "gamut");

SUPPORTS(DmCtrlSupportedClipping, "gamutClipping");
GET(DmCtrlGetClipping, "gamutClipping");
SET(DmCtrlSetClipping, "gamutClipping");

SUPPORTS(DmCtrlSupportedHLGSystemGamma, "hlgSystemGamma");
GET(DmCtrlGetHLGSystemGammaEnable, "hlgSystemGammaEnable");
SET(DmCtrlSetHLGSystemGammaEnable, "hlgSystemGammaEnable");
GET(DmCtrlGetHLGSystemGamma, "hlgSystemGamma");
SET(DmCtrlSetHLGSystemGamma, "hlgSystemGamma");

SUPPORTS(DmCtrlSupportedHLGSystemGammaClipping, "hlgSystemGammaClipping");
GET(DmCtrlGetHLGSystemGammaClipping, "hlgSystemGammaClipping");
SET(DmCtrlSetHLGSystemGammaClipping, "hlgSystemGammaClipping");

SUPPORTS(DmCtrlSupportedGammaTCStatus, "gammaTC");
GET(DmCtrlGetGammaTCStatus, "gammaTC");
SET(DmCtrlSetGammaTCStatus, "gammaTC");
