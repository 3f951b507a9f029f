// The reading of the outside photo sensor's converter.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class OutsidePhotoSensorAD final : public Setting<OutsidePhotoSensorAD, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{
        Support{NAMED(DmCtrlSupportedOutsidePhotoSensorAD)},
        Range{NAMED(DmCtrlGetRangeOutsidePhotoSensorAD), "Get outside photo sensor AD range."}};
    static constexpr Step get{NAMED(DmCtrlGetOutsidePhotoSensorAD), "Get outside photo sensor AD."};
};

template struct Entry<OutsidePhotoSensorAD>;

}  // namespace torvo::bridge
