// What a monitor calibrates itself to. A PUT on a monitor without self-calibration succeeds and writes nothing, so that
// a page can send one target to all.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCalibrationTarget final : public Setting<SelfCalibrationTarget, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCalibration}};
    static constexpr Step get{DmCtrlGetSelfCalibrationTargetV3, "Get SelfCalibration target."};
    static constexpr Step set{DmCtrlSetSelfCalibrationTargetV3, "Set SelfCalibration target."};
    static constexpr Check checks[] = {{isObject, "data must have object."}};

    void Put(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        checkData(request.data(), checks);
        if (monitor.supports(DmCtrlSupportedSelfCalibration)) Setting::Put(result, monitor, request);
    }
};

template struct Entry<SelfCalibrationTarget>;

}  // namespace torvo::bridge
