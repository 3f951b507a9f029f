/* libcolour, colour arithmetic: our own declarations of a library that is not ours. */
#ifndef PELL_COMPANIONS_LIBCOLOUR_H
#define PELL_COMPANIONS_LIBCOLOUR_H

#include <libdmc/color.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Derives a colour's x, y and luminance from its X, Y and Z; the luminance is in the unit of Y. */
void Colour_XYZ2Yxy_UsingOneStruct(DmColorValue* colour);

#ifdef __cplusplus
}
#endif

#endif
