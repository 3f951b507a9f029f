// Colour matrices and look-up tables.
#include <records/picture.h>

#include "simulator/libdmc/Functions.h"

using simulator::byColor;
using simulator::byNumber;
using simulator::Input;
using simulator::Monitor;
using simulator::MonitorCall;
using simulator::Output;
namespace result = simulator::result;

// ---- Colour matrices ------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedColorMatrix, "colorMatrix");
COUNT(DmCtrlGetColorMatrixCount, "colorMatrix", "value");
LIST_AT(DmCtrlGetColorMatrix, "colorMatrix", byNumber);
SET_LIST_AT(DmCtrlSetColorMatrix, "colorMatrix", byNumber);

// ---- One dimension --------------------------------------------------------------------------------------------------

namespace {

/// Null for a depth that there is not.
const char* lutOfDepth(uint32_t depth) {
    return depth == 8 ? "lut" : depth == 10 ? "lut10bit" : nullptr;
}

constexpr auto noSuchDepth = [](Monitor&) { return result::invalidArgument; };

}  // namespace

SUPPORTS(DmCtrlSupportedLUT, "lut");
SUPPORTS(DmCtrlSupportedLUT10bit, "lut10bit");
DmResult DmCtrlGetLUT(const char* serial, const char* product, uint32_t depth, uint32_t color, uint32_t* values,
                      uint32_t* count) {
    MonitorCall call(__func__, serial, product, {depth, color});
    const auto lut = lutOfDepth(depth);
    return lut ? call.get(lut, Output::list(values, count), byColor(color)) : call.run(noSuchDepth);
}
DmResult DmCtrlSetLUT(const char* serial, const char* product, uint32_t depth, uint32_t color, const uint32_t* values,
                      uint32_t count) {
    const auto list = Input::list(values, count);
    MonitorCall call(__func__, serial, product, {depth, color, list});
    const auto lut = lutOfDepth(depth);
    return lut ? call.set(lut, list, byColor(color)) : call.run(noSuchDepth);
}

SUPPORTS(DmCtrlSupportedFrontLUT, "frontLUT");
MEMBER(DmCtrlGetFrontLUTMaxRawValue, "frontLUT", "max");

SUPPORTS(DmCtrlSupportedLUTAData, "lutA");
LIST_AT(DmCtrlGetLUTAData, "lutA", byColor);
SET_LIST_AT(DmCtrlSetLUTAData, "lutA", byColor);

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
SET_LIST(DmCtrlSet3DLUTDirect, "lut3D");
