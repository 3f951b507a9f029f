// The results of the last calibrations; with "summary" without what was measured.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/LastRuns.h"

namespace torvo::bridge {

class SelfQCCalibrationResult final : public JobResult<SelfQCCalibrationResult> {
 public:
    using JobResult::JobResult;

    static constexpr Step get{NAMED(DmCtrlGetSelfQCCalResult), "Get SelfQC calibration result."};

    static void addMeasured(Value& value, const DmSelfQCCalibrationResult& result) {
        value["Lmax"] = result.Lmax;
        value["Lmin"] = result.Lmin;
        value["whitePoint"] = toValue(result.whitePoint);
        value["colorTemperature"] = result.colorTemperature;
        value["ambientTemperature"] = result.ambientTemperature;
    }
};

template struct Entry<SelfQCCalibrationResult>;

}  // namespace torvo::bridge
