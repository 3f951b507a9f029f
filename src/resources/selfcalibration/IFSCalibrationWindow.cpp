// The part of the screen that a calibration measures, in pixels. A PUT keeps what it leaves out.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class IFSCalibrationWindow final : public Setting<IFSCalibrationWindow, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedIFSCalibrationWindow)}};
    static constexpr Step get{NAMED(DmCtrlGetIFSCalibrationWindow), "Get IFS calibration window."};
    static constexpr Step set{NAMED(DmCtrlSetIFSCalibrationWindow), "Set IFS calibration window."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<IFSCalibrationWindow>;

}  // namespace torvo::bridge
