/* How libdmc answers. */
#ifndef PELL_COMPANIONS_LIBDMC_RESULT_H
#define PELL_COMPANIONS_LIBDMC_RESULT_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* With its top bit clear a success or a notice; with its top bit set a failure, and the out-parameters are untouched.
 */
typedef int32_t DmResult;

#ifdef __cplusplus
}
#endif

#endif
