// The targets of the last calibrations: the latest, and the one before where the monitor keeps two.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/LastRuns.h"

namespace torvo::bridge {

class SelfQCCalibrationLastTarget final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        const auto targets =
            monitor.enumerate(NAMED(DmCtrlGetSelfQCCalLastTarget), "Get SelfQC calibration last target.");
        result.value = lastRuns(targets, [](const DmCalibrationTarget& target) {
            return toValue(target, companions::calibrationTargetWithoutLut);
        });
    }
};

template struct Entry<SelfQCCalibrationLastTarget>;

}  // namespace torvo::bridge
