/* libdmc, the monitor-control library: what libpell calls of it.
 *
 * Our own declarations of a library that is not ours. Everything here is assumed about it; docs/companions.md says
 * where an assumption matters.
 *
 * A monitor is named by its serial and product texts (NUL-terminated, 8-bit), always the first two arguments, in this
 * order; inputs follow, out-parameters stand last. Texts are only borrowed for the call.
 *
 * Results. Functions answer a `DmResult`; `DmCtrlSupported...` functions answer non-zero for "supported" and have no
 * error code.
 *
 * Threads. Any function may be called from any thread; libdmc serialises what it must.
 */
#ifndef PELL_COMPANIONS_LIBDMC_H
#define PELL_COMPANIONS_LIBDMC_H

#include <libdmc/device.h>
#include <libdmc/monitors.h>
#include <libdmc/picture.h>
#include <libdmc/selfcalibration.h>

#endif
