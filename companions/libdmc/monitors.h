/* libdmc: the connected monitors, and the ways to one of them. */
#ifndef PELL_COMPANIONS_LIBDMC_MONITORS_H
#define PELL_COMPANIONS_LIBDMC_MONITORS_H

#include <libdmc/result.h>

#ifdef __cplusplus
extern "C" {
#endif

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

/* ---- Firmware: the way to a monitor for libfwupdate, and a lock against other users of this library ------------ */

/* The handle stays good while the monitor is connected. */
DmResult DmCtrlGetHIDHandle(const char* serial, const char* product, void** handle);

/* Newer versions only. */
DmResult DmCtrlLockMonitor(const char* serial, const char* product);
DmResult DmCtrlUnlockMonitor(const char* serial, const char* product);

#ifdef __cplusplus
}
#endif

#endif
