// The reading of the outside photo sensor's converter.
#include "bridge/Setting.h"

namespace torvo::bridge {

class OutsidePhotoSensorAD final : public Setting<OutsidePhotoSensorAD, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedOutsidePhotoSensorAD);
    static constexpr Step range{NAMED(DmCtrlGetRangeOutsidePhotoSensorAD), "Get outside photo sensor AD range."};
    static constexpr Step get{NAMED(DmCtrlGetOutsidePhotoSensorAD), "Get outside photo sensor AD."};
};

template std::uint32_t serve<OutsidePhotoSensorAD>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
