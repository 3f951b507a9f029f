/* QtWebKitBridgeHelper, the host's bridge to its page: our own declarations of a library that is not ours.
 * Any function may be called from any thread; texts are NUL-terminated UTF-8 and only borrowed for the call. */
#ifndef PELL_COMPANIONS_QTWEBKITBRIDGEHELPER_H
#define PELL_COMPANIONS_QTWEBKITBRIDGEHELPER_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Makes a promise of the page and returns its identifier. */
uint32_t BridgeHelperCreatePromiseID(void);

/* Settles a promise: a web status code and the JSON text {"error", "value"}. */
void BridgeHelperSetResponse(uint32_t promise, uint32_t status, const char* json);

/* Sends the page an event with a JSON text. */
void BridgeHelperDispatchEvent(const char* name, const char* json);

#ifdef __cplusplus
}
#endif

#endif
