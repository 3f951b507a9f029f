// The stand-in colour library: the real conversion. It knows no monitors, so it is not journalled.
#include <libcolour.h>

void Colour_XYZ2Yxy_UsingOneStruct(DmColorValue* colour) {
    const double sum = colour->X + colour->Y + colour->Z;
    colour->x = sum == 0 ? 0 : colour->X / sum;
    colour->y = sum == 0 ? 0 : colour->Y / sum;
    colour->luminance = colour->Y;
}
