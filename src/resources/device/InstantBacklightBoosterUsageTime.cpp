// How long the backlight booster has been used.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class InstantBacklightBoosterUsageTime final : public Setting<InstantBacklightBoosterUsageTime, Record> {
 public:
    using Setting::Setting;

    static constexpr Step get{NAMED(DmCtrlGetInstantBacklightBoosterUsageTime),
                              "Get instant backlight booster usage time."};
};

template struct Entry<InstantBacklightBoosterUsageTime>;

}  // namespace torvo::bridge
