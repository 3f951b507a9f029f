// How long the monitor has been used.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class UsageTime final : public Setting<UsageTime, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedUsageTime}};
    static constexpr Step get{DmCtrlGetUsageTime, "Get usage time."};
};

template struct Entry<UsageTime>;

}  // namespace torvo::bridge
