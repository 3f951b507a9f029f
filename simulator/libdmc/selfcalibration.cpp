// What monitors measure and correct by themselves.
#include <records/selfcalibration.h>

#include "simulator/libdmc/Functions.h"

GET(DmCtrlGetSelfQCCalTarget, "calibrationTarget");
SET(DmCtrlSetSelfQCCalTarget, "calibrationTarget");
