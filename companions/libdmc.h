/* libdmc, the monitor-control library: what libpell calls of it.
 *
 * Our own declarations of a library that is not ours. Everything here is assumed about it; docs/companions.md says
 * where an assumption matters.
 *
 * A monitor is named by its serial and product texts (NUL-terminated, 8-bit), always the first two arguments, in this
 * order; inputs follow, out-parameters stand last. Texts are only borrowed for the call.
 *
 * Results. A `DmResult` with its top bit clear is a success or a notice; with its top bit set it is a failure, and the
 * out-parameters are untouched. `DmCtrlSupported...` functions answer non-zero for "supported" and have no error code.
 *
 * Threads. Any function may be called from any thread; libdmc serialises what it must.
 */
#ifndef PELL_COMPANIONS_LIBDMC_H
#define PELL_COMPANIONS_LIBDMC_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int32_t DmResult;

/* The sizes of the two buffers of DmCtrlGetSerialProduct, the closing NUL included. */
#define DM_SERIAL_SIZE 9
#define DM_PRODUCT_SIZE 17

/* ---- The list of monitors ------------------------------------------------------------------------------------- */

/* Looks for connected monitors afresh. Both arguments are reserved and zero. */
DmResult DmCtrlFind(uint32_t reserved1, uint32_t reserved2);

/* Lets go of everything the library holds about its monitors. */
DmResult DmCtrlRelease(void);

DmResult DmCtrlGetNumMonitors(uint32_t* count);

/* Writes at most DM_SERIAL_SIZE and DM_PRODUCT_SIZE bytes. Fails past the last monitor. `flags` is reserved and zero.
 */
DmResult DmCtrlGetSerialProduct(uint32_t index, char* serial, char* product, uint32_t flags);

/* ---- Critical section: serialises access to one monitor between programs; newer versions only ------------------ */

int32_t DmCtrlSupportedCriticalSection(const char* serial, const char* product);
DmResult DmCtrlEnterCriticalSection(const char* serial, const char* product);
DmResult DmCtrlExitCriticalSection(const char* serial, const char* product);

/* ---- Brightness and contrast: a step of the monitor's own range, or 0.0 to 100.0 per cent of it ---------------- */

int32_t DmCtrlSupportedBrightness(const char* serial, const char* product);
DmResult DmCtrlGetRangeBrightnessForStep(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGetBrightnessForPercentage(const char* serial, const char* product, double* percentage);
DmResult DmCtrlGetBrightnessForStep(const char* serial, const char* product, uint32_t* step);
DmResult DmCtrlSetBrightnessForPercentage(const char* serial, const char* product, double percentage);
DmResult DmCtrlSetBrightnessForStep(const char* serial, const char* product, uint32_t step);

int32_t DmCtrlSupportedContrast(const char* serial, const char* product);
DmResult DmCtrlGetRangeContrastForStep(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGetContrastForPercentage(const char* serial, const char* product, double* percentage);
DmResult DmCtrlGetContrastForStep(const char* serial, const char* product, uint32_t* step);
DmResult DmCtrlSetContrastForPercentage(const char* serial, const char* product, double percentage);
DmResult DmCtrlSetContrastForStep(const char* serial, const char* product, uint32_t step);

/* ---- Hue and saturation of the whole picture, in steps --------------------------------------------------------- */

int32_t DmCtrlSupported6ColorsHue(const char* serial, const char* product);
DmResult DmCtrlGetRange6ColorsHue(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGet6ColorsHue(const char* serial, const char* product, uint32_t* hue);
DmResult DmCtrlSet6ColorsHue(const char* serial, const char* product, uint32_t hue);

int32_t DmCtrlSupported6ColorsSaturation(const char* serial, const char* product);
DmResult DmCtrlGetRange6ColorsSaturation(const char* serial, const char* product, uint32_t* minimum, uint32_t* maximum);
DmResult DmCtrlGet6ColorsSaturation(const char* serial, const char* product, uint32_t* saturation);
DmResult DmCtrlSet6ColorsSaturation(const char* serial, const char* product, uint32_t saturation);

#ifdef __cplusplus
}
#endif

#endif
