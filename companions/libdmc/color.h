/* libdmc: colours of light, as records of several families hold them. */
#ifndef PELL_COMPANIONS_LIBDMC_COLOR_H
#define PELL_COMPANIONS_LIBDMC_COLOR_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* CIE 1931 chromaticity. */
typedef struct DmChromaticity {
    double x;
    double y;
} DmChromaticity;

/* One colour in two forms at once: tristimulus values X, Y, Z, and chromaticity x, y with the luminance Y of the Yxy
 * form. Which of them a function reads or writes is said where the record is used. */
typedef struct DmColorValue {
    double X;
    double Y;
    double Z;
    double x;
    double y;
    double luminance;
} DmColorValue;

#ifdef __cplusplus
}
#endif

#endif
