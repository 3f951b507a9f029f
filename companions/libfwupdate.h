/* libfwupdate, the firmware-update library: our own declarations of a library that is not ours.
 *
 * Every function is looked up by name. Handles are made by `...Create...` and given back with `...Release`; a null
 * handle means failure. Texts are NUL-terminated UTF-8 unless said otherwise. A `DmResult` reads as in libdmc/result.h.
 * Functions may be called from any thread. A package and a HID handle may be used by several threads at once; any other
 * handle is used by the thread that made it.
 */
#ifndef PELL_COMPANIONS_LIBFWUPDATE_H
#define PELL_COMPANIONS_LIBFWUPDATE_H

#include <libdmc/result.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifdef _WIN32
typedef wchar_t FWPathCharacter;
#else
typedef char FWPathCharacter;
#endif

typedef struct FWDfwFile FWDfwFile;             /* an opened firmware package */
typedef struct FWUtf8String FWUtf8String;       /* a text that the library owns */
typedef struct FWDeviceProfile FWDeviceProfile; /* what the library knows of a monitor's device */
typedef void* FWHidHandle;                      /* a monitor's HID handle, from DmCtrlGetHIDHandle */

typedef struct FirmwareVersionRecord {
    uint32_t system;
    uint32_t controller;
    uint32_t frontEnd;
    uint32_t osd;
    uint32_t fpga;
} FirmwareVersionRecord;

typedef struct TransferProgress {
    uint32_t transferredBlocks;
    uint32_t blockCount;
    uint32_t transferredBytes;
    uint32_t totalBytes;
} TransferProgress;

/* Called during a transfer, from whatever thread the library likes. Non-zero: go on. Must not throw. */
typedef int32_t (*FWTransferProgressCallback)(const TransferProgress* progress, void* context);

/* ---- Packages -------------------------------------------------------------------------------------------------- */

/* The path in the system's own form: UTF-16 on Windows, bytes elsewhere. */
FWDfwFile* FWDfwFileCreateWithPath(const FWPathCharacter* path);
FWDfwFile* FWDfwFileCreateWithUtf8Path(const char* path);
void FWDfwFileRelease(FWDfwFile* file);

/* Owned by the file; null when the package names no product. */
const char* FWDfwFileGetTargetMonitorProduct(FWDfwFile* file);
FirmwareVersionRecord FWDfwFileGetTargetFirmwareVersion(FWDfwFile* file);

/* Non-zero: the package can be applied to a monitor that has this firmware. */
int32_t FWDfwFileSupportsMonitorFirmwareVersion(FWDfwFile* file, const FirmwareVersionRecord* version);

/* A description of the package as JSON; released by the caller. */
FWUtf8String* FWUtf8StringCreateDfwFileJsonString(FWDfwFile* file);
const char* FWUtf8StringGetCString(FWUtf8String* text);
void FWUtf8StringRelease(FWUtf8String* text);

/* ---- A package and a monitor ----------------------------------------------------------------------------------- */

/* The library's own code of how well the package fits the monitor. */
uint32_t FWDfwFileCheckMonitor(FWDfwFile* file, FWHidHandle monitor);
int32_t FWDfwFileSupportsMonitor(FWDfwFile* file, FWHidHandle monitor);

/* ---- A monitor's firmware -------------------------------------------------------------------------------------- */

int32_t FWMonitorSupportsFirmwareUpdate(FWHidHandle monitor);
int32_t FWMonitorSupportsFirmwareUpdateV4(FWHidHandle monitor);
DmResult FWMonitorGetTransferState(FWHidHandle monitor, uint32_t* state);
DmResult FWMonitorGetFirmwareVersion(FWHidHandle monitor, FirmwareVersionRecord* version);

/* Returns when the whole transfer is over. */
DmResult FWMonitorTransferFirmwareData(FWHidHandle monitor, FWDfwFile* file, FWTransferProgressCallback progress,
                                       void* context);
DmResult FWMonitorTriggerFirmwareUpdate(FWHidHandle monitor);

/* ---- Device versions ------------------------------------------------------------------------------------------- */

DmResult FWDeviceProfileCreateFromMonitor(FWHidHandle monitor, FWDeviceProfile** profile);
void FWDeviceProfileRelease(FWDeviceProfile* profile);

/* Texts in two steps: with a null buffer the size (the closing NUL included) is written to `*size`; with a buffer,
 * `*size` is its capacity on entry and the size used on return. */
DmResult FWDeviceProfileGetDeviceID(FWDeviceProfile* profile, char* buffer, uint32_t* size);
DmResult FWDeviceProfileGetVersionString(FWDeviceProfile* profile, const FirmwareVersionRecord* version, char* buffer,
                                         uint32_t* size);

DmResult FWMonitorGetDeviceVersion(FWHidHandle monitor, FWDeviceProfile* profile, const char* device,
                                   FirmwareVersionRecord* version);
DmResult FWMonitorGetDeviceVersionAfterUpdate(FWHidHandle monitor, FWDeviceProfile* profile, FWDfwFile* file,
                                              const char* device, FirmwareVersionRecord* version);

#ifdef __cplusplus
}
#endif

#endif
