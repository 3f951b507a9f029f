// When the backlight was replaced, and how long it has been used.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class BacklightReplaceInfo final : public Setting<BacklightReplaceInfo, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedBacklightReplaceInfo)}};
    static constexpr Step get{NAMED(DmCtrlGetBacklightReplaceInfo), "Get backlight replace info."};
};

template struct Entry<BacklightReplaceInfo>;

}  // namespace torvo::bridge
