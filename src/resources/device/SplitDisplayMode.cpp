// How the screen is split; a number of the library. There is no function that sets it: a PUT calls the getter, on
// purpose, and what that reads is dropped.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SplitDisplayMode final : public Setting<SplitDisplayMode, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSplitDisplayMode)}};
    static constexpr Step get{NAMED(DmCtrlGetSplitDisplayMode), "Get split display mode."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data), "data is not number.");
        auto mode = toNumber<std::uint32_t>(data);
        monitor.write(NAMED(DmCtrlGetSplitDisplayMode), "Set split display mode.", &mode);
    }
};

template struct Entry<SplitDisplayMode>;

}  // namespace torvo::bridge
