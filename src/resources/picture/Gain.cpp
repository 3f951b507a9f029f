// The gain of the three channels.
#include "bridge/Resource.h"
#include "resources/picture/Colors.h"

namespace torvo::bridge {

class Gain final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(DmCtrlSupportedGain);
        } else if (query.has("range")) {
            result.value = monitor.range(DmCtrlGetRangeGain, "Get gain range.");
        } else if (const auto color = colorOf(query, colorsRGB)) {
            result.value = monitor.read(DmCtrlGetGain, "Get gain.", *color);
        } else {
            for (const auto& [name, code, get, set] : channels)
                result.value[name] = monitor.read(DmCtrlGetGain, get, code);
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        for (const auto& [name, code, get, set] : channels)
            if (const Value& gain = data.get(name); gain.isNumber())
                monitor.write(NAMED(DmCtrlSetGain), set, code, gain.asUInt());
    }

    struct Channel {
        const char* name;
        std::uint32_t code;
        const char* getAction;
        const char* setAction;
    };
    static constexpr Channel channels[] = {
        {"red", DM_COLOR_RED, "Get gain red.", "Set gain red."},
        {"green", DM_COLOR_GREEN, "Get gain green.", "Set gain green."},
        {"blue", DM_COLOR_BLUE, "Get gain blue.", "Set gain blue."},
    };
};

template std::uint32_t serve<Gain>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
