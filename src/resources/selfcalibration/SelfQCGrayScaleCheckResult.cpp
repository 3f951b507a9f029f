// The results of the last grayscale checks; with "summary" without what was measured.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/LastRuns.h"

namespace torvo::bridge {

class SelfQCGrayScaleCheckResult final : public JobResult<SelfQCGrayScaleCheckResult> {
 public:
    using JobResult::JobResult;

    static constexpr Step get{NAMED(DmCtrlGetSelfQCGSCResult), "Get SelfQC grayscale check result."};

    static void addMeasured(Value& value, const DmGrayScaleCheckResult& result) {
        value["AAPMErrorRate"] = result.AAPMErrorRate;
        value["JNDIdeal"] = firstOf(result.JNDIdeal, result.stepCount);
        value["AAPMIdeal"] = firstOf(result.AAPMIdeal, result.stepCount);
        value["errorRate"] = firstOf(result.errorRate, result.stepCount);
        value["judgeThreshold"] = result.judgeThreshold;
        value["ambientTemperature"] = result.ambientTemperature;
    }
};

template struct Entry<SelfQCGrayScaleCheckResult>;

}  // namespace torvo::bridge
