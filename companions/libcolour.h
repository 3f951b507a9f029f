/* libcolour, colour arithmetic: our own declarations of a library that is not ours. */
#ifndef PELL_COMPANIONS_LIBCOLOUR_H
#define PELL_COMPANIONS_LIBCOLOUR_H

#ifdef __cplusplus
extern "C" {
#endif

/* Three tristimulus or chromaticity components: X, Y, Z before a conversion, Y, x, y after it. */
typedef struct ColourTriple {
    double component[3];
} ColourTriple;

/* Replaces an XYZ colour by the same colour as Yxy (Y in the unit of the input, x and y without unit). */
void Colour_XYZ2Yxy_UsingOneStruct(ColourTriple* colour);

#ifdef __cplusplus
}
#endif

#endif
