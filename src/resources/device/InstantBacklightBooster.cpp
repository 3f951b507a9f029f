// The backlight booster: a higher luminance for a while. A DELETE switches it off.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class InstantBacklightBooster final : public Setting<InstantBacklightBooster, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedInstantBacklightBooster)}};
    static constexpr Step get{NAMED(DmCtrlGetInstantBacklightBooster), "Get instant backlight booster."};
    static constexpr Step set{NAMED(DmCtrlSetInstantBacklightBooster), "Set instant backlight booster."};

    static bool hasTargetOrMode(const Value& data) noexcept { return data.has("target") || data.has("mode"); }
    static constexpr Check checks[] = {{hasTargetOrMode, "Request requires 'target' or 'mode' key."}};

    // The members of the target stand in "target", or beside "target" and "mode"; those in "target" count before.
    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkData(data, checks);
        DmBacklightBooster booster = monitor.read(get.function, get.action);
        if (isNumber(data.get("mode"))) booster.mode = toNumber<std::uint32_t>(data.get("mode"));
        replaceMembers(booster.target, data);
        replaceMembers(booster.target, data.get("target"));
        monitor.write(set.function, set.action, &booster);
    }

    void Delete(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        DmBacklightBooster booster = monitor.read(get.function, get.action);
        booster.mode = 0;
        monitor.write(set.function, set.action, &booster);
    }
};

template struct Entry<InstantBacklightBooster>;

}  // namespace torvo::bridge
