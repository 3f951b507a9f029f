// Colour matrices and look-up tables.
#include <records/picture.h>

#include "simulator/libdmc/Functions.h"

using simulator::Answer;
using simulator::byColor;
using simulator::list;
using simulator::Monitor;
using simulator::monitorCall;
using simulator::Output;
namespace result = simulator::result;

// ---- Colour matrices ------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedColorMatrix, "colorMatrix");
COUNT(DmCtrlGetColorMatrixCount, "colorMatrix", "value");
DmResult DmCtrlGetColorMatrix(const char* serial, const char* product, uint32_t index, double* elements,
                              uint32_t* count) {
    return monitorCall(__func__, serial, product, index).get("colorMatrix", Output::list(elements, count), index);
}
DmResult DmCtrlSetColorMatrix(const char* serial, const char* product, uint32_t index, const double* elements,
                              uint32_t count) {
    return monitorCall(__func__, serial, product, index, list(elements, count)).set("colorMatrix", index);
}

// ---- One dimension --------------------------------------------------------------------------------------------------

namespace {

/// Null for a depth that there is not.
const char* lutOfDepth(uint32_t depth) {
    return depth == 8 ? "lut" : depth == 10 ? "lut10bit" : nullptr;
}

Answer noSuchDepth(Monitor&) {
    return {result::invalidArgument};
}

}  // namespace

SUPPORTS(DmCtrlSupportedLUT, "lut");
SUPPORTS(DmCtrlSupportedLUT10bit, "lut10bit");
DmResult DmCtrlGetLUT(const char* serial, const char* product, uint32_t depth, uint32_t color, uint32_t* values,
                      uint32_t* count) {
    auto call = monitorCall(__func__, serial, product, depth, color);
    const auto lut = lutOfDepth(depth);
    return lut ? call.get(lut, Output::list(values, count), byColor(color)) : call.run(noSuchDepth);
}
DmResult DmCtrlSetLUT(const char* serial, const char* product, uint32_t depth, uint32_t color, const uint32_t* values,
                      uint32_t count) {
    auto call = monitorCall(__func__, serial, product, depth, color, list(values, count));
    const auto lut = lutOfDepth(depth);
    return lut ? call.set(lut, byColor(color)) : call.run(noSuchDepth);
}

SUPPORTS(DmCtrlSupportedFrontLUT, "frontLUT");
MEMBER(DmCtrlGetFrontLUTMaxRawValue, "frontLUT", "max");

SUPPORTS(DmCtrlSupportedLUTAData, "lutA");
DmResult DmCtrlGetLUTAData(const char* serial, const char* product, uint32_t color, uint32_t* values, uint32_t* count) {
    return monitorCall(__func__, serial, product, color).get("lutA", Output::list(values, count), byColor(color));
}
DmResult DmCtrlSetLUTAData(const char* serial, const char* product, uint32_t color, const uint32_t* values,
                           uint32_t count) {
    return monitorCall(__func__, serial, product, color, list(values, count)).set("lutA", byColor(color));
}

SUPPORTS(DmCtrlSupportedMonoModelLUTSelect, "monoModelLUT");
GET(DmCtrlGetMonoModelLUTSelect, "monoModelLUT");
SET(DmCtrlSetMonoModelLUTSelect, "monoModelLUT");

// ---- Three dimensions: one direct table, whatever is selected -------------------------------------------------------

SUPPORTS(DmCtrlSupported3DLUT, "lut3D");
COUNT(DmCtrlGet3DLUTGridCount, "lut3DLevels", "value");
LIST(DmCtrlGet3DLUTGridLevels, "lut3DLevels", "value");
COUNT(DmCtrlGet3DLUTSelectionCount, "lut3DSelection", "of");
GET(DmCtrlGet3DLUTSelection, "lut3DSelection");
SET(DmCtrlSet3DLUTSelection, "lut3DSelection");
SET(DmCtrlEnable3DLUT, "lut3DEnabled");
LIST(DmCtrlGet3DLUTDirect, "lut3D", "value");
DmResult DmCtrlSet3DLUTDirect(const char* serial, const char* product, const DmColor* colors, uint32_t count) {
    return monitorCall(__func__, serial, product, list(colors, count)).set("lut3D");
}
