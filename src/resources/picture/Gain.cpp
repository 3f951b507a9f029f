// The gain of the three channels.
#include <libdmc/picture.h>

#include "resources/shapes/Queries.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class Gain final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{DmCtrlSupportedGain}, Range{DmCtrlGetRangeGain, "Get gain range."}};

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

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (answerQuery(result, monitor, query, queries)) return;
        if (const auto color = colorSelectorRGB.in(query)) {
            result.value = monitor.read(DmCtrlGetGain, "Get gain.", *color);
            return;
        }
        for (const Channel& channel : channels)
            result.value[channel.name] = monitor.read(DmCtrlGetGain, channel.getAction, channel.code);
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        for (const Channel& channel : channels)
            if (const Value& gain = data.get(channel.name); isNumber(gain))
                monitor.write(NAMED(DmCtrlSetGain), channel.setAction, channel.code, toNumber<std::uint32_t>(gain));
    }
};

template struct Entry<Gain>;

}  // namespace torvo::bridge
