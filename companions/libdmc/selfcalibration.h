/* libdmc: self-calibration. Newer versions only. */
#ifndef PELL_COMPANIONS_LIBDMC_SELFCALIBRATION_H
#define PELL_COMPANIONS_LIBDMC_SELFCALIBRATION_H

#include <libdmc/color.h>
#include <libdmc/result.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The sizes of a calibration target's texts in bytes, and of its look-up table. A text ends at its first NUL, or at the
 * end of its field when it fills that. */
#define DM_TARGET_FILE_NAME_SIZE 256
#define DM_SENSOR_NAME_SIZE 64
#define DM_SENSOR_SERIAL_SIZE 32
#define DM_TARGET_LUT_SIZE 256

typedef struct DmAmbientSensor {
    char name[DM_SENSOR_NAME_SIZE];
    char serial[DM_SENSOR_SERIAL_SIZE];
} DmAmbientSensor;

/* What a monitor calibrates itself to. Luminance in cd/m2, colour temperature in kelvin; `LminEnable` and `LambEnable`
 * are 0 or 1; the codes are the library's own. */
typedef struct DmCalibrationTarget {
    uint32_t accuracy;
    double Lmax;
    uint32_t LminEnable;
    double Lmin;
    uint32_t colorTemperature;
    DmChromaticity whitePoint;
    uint32_t displayFunction;
    uint32_t exp;
    char userFileName[DM_TARGET_FILE_NAME_SIZE];
    uint32_t LambEnable;
    double Lamb;
    double ambient;
    DmAmbientSensor ambientSensor;
    double lut[DM_TARGET_LUT_SIZE];
} DmCalibrationTarget;

DmResult DmCtrlGetSelfQCCalTarget(const char* serial, const char* product, DmCalibrationTarget* target);
DmResult DmCtrlSetSelfQCCalTarget(const char* serial, const char* product, const DmCalibrationTarget* target);

#ifdef __cplusplus
}
#endif

#endif
