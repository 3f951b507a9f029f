// The result of the last self-calibration. A PUT gives the colours as X, Y and Z; x and y are derived.
#include <libcolour.h>
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCalibrationResult final : public Setting<SelfCalibrationResult, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCalibration}};
    static constexpr Step get{DmCtrlGetSelfCalibrationResultV4, "Get SelfCalibration result."};
    static constexpr Step set{DmCtrlSetSelfCalibrationResultV4, "Set SelfCalibration result."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkData(data, checks);
        auto result = toRecord<DmSelfCalibrationResult>(data);
        for (DmColorValue* color : {&result.white, &result.red, &result.green, &result.blue, &result.black})
            gated(Colour_XYZ2Yxy_UsingOneStruct)(color);
        monitor.write(set.function, set.action, &result);
    }
};

template struct Entry<SelfCalibrationResult>;

}  // namespace torvo::bridge
