/* libscrivo2, the host's logging library: our own declarations of a library that is not ours.
 * Both functions are looked up by name. Lines may be logged from any thread. */
#ifndef PELL_COMPANIONS_LIBSCRIVO2_H
#define PELL_COMPANIONS_LIBSCRIVO2_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ScrivoLogger ScrivoLogger;

/* The process's logger; owned by the library. */
ScrivoLogger* scrivo_get_logger(void);

/* Writes one line under a logger's name. libpell uses level 2 for requests that succeeded and 5 for those that failed.
 * Both texts are NUL-terminated and only borrowed for the call. */
void scrivo_log(ScrivoLogger* logger, const char* name, uint32_t level, const char* line);

#ifdef __cplusplus
}
#endif

#endif
