/* libdmc: self-calibration, self-correction, and the quality-control jobs of newer monitors (SelfQC). Codes are the
 * library's own; flags are 0 or 1; luminance is in cd/m2, colour temperature in kelvin. */
#ifndef PELL_COMPANIONS_LIBDMC_SELFCALIBRATION_H
#define PELL_COMPANIONS_LIBDMC_SELFCALIBRATION_H

#include <libdmc/color.h>
#include <libdmc/result.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---------------------------------------------------------------------------------------------------- */

/* The sizes of texts in bytes, and of a look-up table. A text ends at its first NUL, or at the end of its field when it
 * fills that. */
#define DM_TARGET_FILE_NAME_SIZE 256
#define DM_SENSOR_NAME_SIZE 64
#define DM_SENSOR_SERIAL_SIZE 32
#define DM_TARGET_LUT_SIZE 256

/* A date with a time of day; the month counts from 1. */
typedef struct DmClockTime {
    uint16_t year;
    uint8_t month;
    uint8_t day;
    uint8_t hour;
    uint8_t minute;
} DmClockTime;

/* Of the colours only x and y are used. */
typedef struct DmSelfCalibrationTarget {
    uint32_t enable;
    uint16_t id;
    double luminance;
    uint32_t clipping;
    uint32_t colorTemperature;
    uint32_t gamma;
    uint32_t gamut;
    DmColorValue white;
    DmColorValue red;
    DmColorValue green;
    DmColorValue blue;
} DmSelfCalibrationTarget;

/* The colours are X, Y and Z when they are read, and both forms when they are written. */
typedef struct DmSelfCalibrationResult {
    uint16_t error;
    double luminance;
    uint32_t gamma;
    DmColorValue white;
    DmColorValue red;
    DmColorValue green;
    DmColorValue blue;
    DmColorValue black;
} DmSelfCalibrationResult;

/* The matrices are 3 by 3, in row order. */
typedef struct DmSelfCalibrationResultSetting {
    uint32_t brightness;
    uint32_t contrast;
    double gainMatrix[9];
    double emulationMatrix[9];
} DmSelfCalibrationResultSetting;

/* A number with all bits set does not apply to schedules of this type. `usageTime` is in hours. */
typedef struct DmSelfCalibrationSchedule {
    uint32_t timing;
    uint32_t type;
    uint16_t year;
    uint8_t month;
    uint8_t day;
    uint8_t week;
    uint32_t dayOfWeek;
    uint8_t hour;
    uint8_t minute;
    uint32_t usageTime;
} DmSelfCalibrationSchedule;

typedef struct DmSelfCorrectionTarget {
    uint32_t id;
    uint32_t enable;
    double P;
    double Q;
    double R;
} DmSelfCorrectionTarget;

typedef struct DmSelfCorrectionResult {
    uint32_t error;
    double P;
    double Q;
    double R;
} DmSelfCorrectionResult;

/* Readings of the converter behind the photo sensor, now and as they should be. */
typedef struct DmSelfDiagnosis {
    uint32_t stable;
    uint32_t currentPhotoSensorAD;
    uint32_t targetPhotoSensorAD;
} DmSelfDiagnosis;

/* In pixels. */
typedef struct DmCalibrationWindow {
    uint32_t x;
    uint32_t y;
    uint32_t width;
    uint32_t height;
} DmCalibrationWindow;

typedef struct DmAmbientSensor {
    char name[DM_SENSOR_NAME_SIZE];
    char serial[DM_SENSOR_SERIAL_SIZE];
} DmAmbientSensor;

/* What a monitor calibrates itself to. */
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

/* What follows the type depends on it; unsigned little-endian numbers:
 *   16, 31   usage hours, 4 bytes
 *   17       year, 2 bytes, then month, day, hour and minute, 1 byte each
 *   32       hour, minute
 *   33       day of the week, 4 bytes, then hour, minute
 *   34       day, hour, minute
 *   35, 36   quarter or half of the year, 4 bytes, then day, hour, minute
 *   37       month, day, hour, minute
 */
#define DM_SCHEDULE_DETAILS_SIZE 16

typedef struct DmSelfQCSchedule {
    uint32_t timing;
    uint32_t type;
    uint8_t details[DM_SCHEDULE_DETAILS_SIZE];
} DmSelfQCSchedule;

typedef struct DmUsageHourMinute {
    uint32_t hour;
    uint32_t minute;
} DmUsageHourMinute;

/* By usage when the type is 1, else at the date. */
typedef struct DmSelfQCNextSchedule {
    uint32_t type;
    DmUsageHourMinute usageTime;
    DmClockTime date;
} DmSelfQCNextSchedule;

/* As many error codes as DmCtrlGetSelfQCErrorCodeSize says are used. */
#define DM_ERROR_CODES 16

/* Temperatures in degrees Celsius. */
typedef struct DmSelfQCCalibrationResult {
    DmClockTime date;
    uint32_t errorCode[DM_ERROR_CODES];
    double Lmax;
    double Lmin;
    DmChromaticity whitePoint;
    uint32_t colorTemperature;
    double ambientTemperature;
} DmSelfQCCalibrationResult;

/* Error rates in per cent; GSDF is the DICOM grayscale standard display function. */
typedef struct DmGrayScaleCheckTarget {
    uint32_t judgeEnable;
    uint32_t judgeCondition;
    double absoluteErrorRate;
    double GSDFErrorRate;
} DmGrayScaleCheckTarget;

typedef struct DmGrayScaleCheckLastTarget {
    double Lmax;
    double Lmin;
    uint32_t displayFunction;
    uint32_t exp;
    char userFileName[DM_TARGET_FILE_NAME_SIZE];
    uint32_t useAbsoluteCondition;
    uint32_t useGSDFCondition;
} DmGrayScaleCheckLastTarget;

/* The lists have an entry for each of `stepCount` measured steps. */
#define DM_GRAY_SCALE_STEPS 64

typedef struct DmGrayScaleCheckResult {
    DmClockTime date;
    uint32_t errorCode[DM_ERROR_CODES];
    double AAPMErrorRate;
    uint32_t stepCount;
    double JNDIdeal[DM_GRAY_SCALE_STEPS];
    double AAPMIdeal[DM_GRAY_SCALE_STEPS];
    double errorRate[DM_GRAY_SCALE_STEPS];
    double judgeThreshold;
    double ambientTemperature;
} DmGrayScaleCheckResult;

/* The usage time is in hours. */
typedef struct DmLEAData {
    uint32_t usageTime;
    double luminance;
} DmLEAData;

typedef struct DmPhotoADAgingCorrection {
    DmClockTime date;
    uint32_t before;
    uint32_t after;
} DmPhotoADAgingCorrection;

/* ---- Self-calibration -------------------------------------------------------------------------------------------- */

int32_t DmCtrlSupportedSelfCalibration(const char* serial, const char* product);
DmResult DmCtrlGetSelfCalibrationState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetSelfCalibrationState(const char* serial, const char* product, uint32_t state);
DmResult DmCtrlGetSelfCalibrationTargetV3(const char* serial, const char* product, DmSelfCalibrationTarget* target);
DmResult DmCtrlSetSelfCalibrationTargetV3(const char* serial, const char* product,
                                          const DmSelfCalibrationTarget* target);
DmResult DmCtrlGetSelfCalibrationResultV4(const char* serial, const char* product, DmSelfCalibrationResult* result);
DmResult DmCtrlSetSelfCalibrationResultV4(const char* serial, const char* product,
                                          const DmSelfCalibrationResult* result);
DmResult DmCtrlGetSelfCalibrationClockTime(const char* serial, const char* product, DmClockTime* time);
DmResult DmCtrlSetSelfCalibrationClockTime(const char* serial, const char* product, const DmClockTime* time);

int32_t DmCtrlSupportedSelfCalibrationScheduleV2(const char* serial, const char* product);
DmResult DmCtrlGetSelfCalibrationScheduleV2(const char* serial, const char* product,
                                            DmSelfCalibrationSchedule* schedule);
DmResult DmCtrlSetSelfCalibrationScheduleV2(const char* serial, const char* product,
                                            const DmSelfCalibrationSchedule* schedule);
DmResult DmCtrlGetSelfCalibrationResultSetting(const char* serial, const char* product,
                                               DmSelfCalibrationResultSetting* setting);
DmResult DmCtrlSetSelfCalibrationResultSetting(const char* serial, const char* product,
                                               const DmSelfCalibrationResultSetting* setting);

/* Monitors with modes (DmCtrlSupportedMode) choose a target by its index, older ones by an index and a flag for fine
 * contrast. */
DmResult DmCtrlGetSelfIndexCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetSelfIndex(const char* serial, const char* product, int32_t* index, uint32_t* fineContrast);
DmResult DmCtrlSetSelfIndex(const char* serial, const char* product, int32_t index, uint32_t fineContrast);
DmResult DmCtrlGetSelfTargetCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetSelfTargetIndex(const char* serial, const char* product, uint32_t* index);
DmResult DmCtrlSetSelfTargetIndex(const char* serial, const char* product, uint32_t index);

/* The numbers of targets, one for each target, or for SelfQC one for each mode. */
DmResult DmCtrlGetSelfTargetPairing(const char* serial, const char* product, uint32_t* targets, uint32_t count);
DmResult DmCtrlSetSelfTargetPairing(const char* serial, const char* product, const uint32_t* targets, uint32_t count);

int32_t DmCtrlSupportedAmbientLightCancelOnSelfCalibration(const char* serial, const char* product);
DmResult DmCtrlGetAmbientLightCancelOnSelfCalibration(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetAmbientLightCancelOnSelfCalibration(const char* serial, const char* product, uint32_t enabled);

int32_t DmCtrlSupportedCalibrationState(const char* serial, const char* product);
DmResult DmCtrlGetCalibrationState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetCalibrationState(const char* serial, const char* product, uint32_t state);

/* ---- Self-correction; its state is that of self-calibration -------------------------------------------------------
 */

int32_t DmCtrlSupportedSelfCorrection(const char* serial, const char* product);
DmResult DmCtrlGetSelfCorrectionTarget(const char* serial, const char* product, DmSelfCorrectionTarget* target);
DmResult DmCtrlSetSelfCorrectionTarget(const char* serial, const char* product, const DmSelfCorrectionTarget* target);
DmResult DmCtrlGetSelfCorrectionResult(const char* serial, const char* product, DmSelfCorrectionResult* result);

/* ---- All that follows: newer versions only, but for the two that say otherwise ------------------------------------
 */

int32_t DmCtrlSupportedRCSelfDiagnosis(const char* serial, const char* product);
DmResult DmCtrlGetRCSelfDiagnosisData(const char* serial, const char* product, DmSelfDiagnosis* diagnosis);

int32_t DmCtrlSupportedIFSCalibrationWindow(const char* serial, const char* product);
DmResult DmCtrlGetIFSCalibrationWindow(const char* serial, const char* product, DmCalibrationWindow* window);
DmResult DmCtrlSetIFSCalibrationWindow(const char* serial, const char* product, const DmCalibrationWindow* window);

/* The programme belongs to the application that has locked it; an owner of 0 is none. The timeout is in minutes. */
int32_t DmCtrlSupportedSelfCalibrationMutex(const char* serial, const char* product);
DmResult DmCtrlGetSelfCalibrationMutexOwner(const char* serial, const char* product, uint32_t* owner);
DmResult DmCtrlLockSelfCalibration(const char* serial, const char* product, uint32_t applicationID, uint8_t timeout);
DmResult DmCtrlUnlockSelfCalibration(const char* serial, const char* product, uint32_t applicationID);

/* One flag for each mode. In every version: non-zero when the fine-contrast mode is there. */
int32_t DmCtrlHasFineContrast(const char* serial, const char* product, uint32_t fineContrast);
DmResult DmCtrlGetEnableSelfCalibrationMode(const char* serial, const char* product, uint32_t* enabled, uint32_t count);
DmResult DmCtrlSetEnableSelfCalibrationMode(const char* serial, const char* product, const uint32_t* enabled,
                                            uint32_t count);

DmResult DmCtrlGetSelfQCTargetSelect(const char* serial, const char* product, uint32_t* index);
DmResult DmCtrlSetSelfQCTargetSelect(const char* serial, const char* product, uint32_t index);
int32_t DmCtrlSupportedSelfTargetPairing(const char* serial, const char* product);

int32_t DmCtrlSupportedSelfQCCal(const char* serial, const char* product);
DmResult DmCtrlGetSelfQCCalState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetSelfQCCalState(const char* serial, const char* product, uint32_t state);
DmResult DmCtrlGetSelfQCCalTarget(const char* serial, const char* product, DmCalibrationTarget* target);
DmResult DmCtrlSetSelfQCCalTarget(const char* serial, const char* product, const DmCalibrationTarget* target);

/* The last runs that the monitor keeps, the latest first; no more than two. */
DmResult DmCtrlGetSelfQCCalLastTarget(const char* serial, const char* product, DmCalibrationTarget* targets,
                                      uint32_t* count);
DmResult DmCtrlGetSelfQCCalResult(const char* serial, const char* product, DmSelfQCCalibrationResult* results,
                                  uint32_t* count);
DmResult DmCtrlGetSelfQCErrorCodeSize(const char* serial, const char* product, uint32_t* size);

DmResult DmCtrlEnumSupportedSelfCalibrationScheduleType(const char* serial, const char* product, uint32_t* types,
                                                        uint32_t* count);
DmResult DmCtrlGetSelfQCCalSchedule(const char* serial, const char* product, DmSelfQCSchedule* schedule);
DmResult DmCtrlSetSelfQCCalSchedule(const char* serial, const char* product, const DmSelfQCSchedule* schedule);
DmResult DmCtrlGetSelfQCGSCSchedule(const char* serial, const char* product, DmSelfQCSchedule* schedule);
DmResult DmCtrlSetSelfQCGSCSchedule(const char* serial, const char* product, const DmSelfQCSchedule* schedule);

#define DM_JOB_CALIBRATION 0
#define DM_JOB_GRAY_SCALE_CHECK 1
#define DM_JOB_LEA 2
DmResult DmCtrlGetSelfQCNextSchedule(const char* serial, const char* product, uint32_t job,
                                     DmSelfQCNextSchedule* schedule);

int32_t DmCtrlSupportedSelfQCGSC(const char* serial, const char* product);
DmResult DmCtrlGetSelfQCGSCState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetSelfQCGSCState(const char* serial, const char* product, uint32_t state);
DmResult DmCtrlGetSelfQCGSCTarget(const char* serial, const char* product, DmGrayScaleCheckTarget* target);
DmResult DmCtrlSetSelfQCGSCTarget(const char* serial, const char* product, const DmGrayScaleCheckTarget* target);
DmResult DmCtrlGetSelfQCGSCLastTarget(const char* serial, const char* product, DmGrayScaleCheckLastTarget* latest,
                                      DmGrayScaleCheckLastTarget* beforeLast);
DmResult DmCtrlGetSupportedSelfQCGSCLastTargetCount(const char* serial, const char* product, uint32_t* count);
DmResult DmCtrlGetSelfQCGSCResult(const char* serial, const char* product, DmGrayScaleCheckResult* results,
                                  uint32_t* count);

/* In every version, but not its getter and setter. */
int32_t DmCtrlSupportedSelfQCRecalibrationForGSCErrorEnable(const char* serial, const char* product);
DmResult DmCtrlGetSelfQCRecalibrationForGSCErrorEnable(const char* serial, const char* product, uint32_t* enabled);
DmResult DmCtrlSetSelfQCRecalibrationForGSCErrorEnable(const char* serial, const char* product, uint32_t enabled);

/* 1 is running. The job can only be stopped. */
int32_t DmCtrlSupportedSelfQCLEA(const char* serial, const char* product);
DmResult DmCtrlGetSelfQCLEAState(const char* serial, const char* product, uint32_t* state);
DmResult DmCtrlSetSelfQCLEAStateToStop(const char* serial, const char* product);
int32_t DmCtrlSupportedSelfQCLEAMeasTiming(const char* serial, const char* product);
DmResult DmCtrlGetSelfQCLEAMeasTiming(const char* serial, const char* product, uint32_t* timing);
DmResult DmCtrlSetSelfQCLEAMeasTiming(const char* serial, const char* product, uint32_t timing);
DmResult DmCtrlGetSelfQCLEAData(const char* serial, const char* product, DmLEAData* data, uint32_t* count);

int32_t DmCtrlFSSupportedPhotoADAgingCorrectLog(const char* serial, const char* product);
DmResult DmCtrlFSGetPhotoADAgingCorrectLog(const char* serial, const char* product, uint32_t index,
                                           DmPhotoADAgingCorrection* correction);

#ifdef __cplusplus
}
#endif

#endif
