// The chromaticity of the white point or of a primary.
#include "bridge/Records.h"
#include "bridge/Resource.h"
#include "resources/picture/Colors.h"

namespace torvo::bridge {

class Chromaticity final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(DmCtrlSupportedChromaticity);
        } else if (query.has("range")) {
            const auto [minimum, maximum] = monitor.read(DmCtrlGetRangeChromaticity, "Get chromaticity range.");
            result.value = {{"x", {{"min", minimum.x}, {"max", maximum.x}}},
                            {"y", {{"min", minimum.y}, {"max", maximum.y}}}};
        } else if (query.has("RGBW")) {
            result.value = toValue(monitor.read(DmCtrlGetRGBWChromaticities, "Get RGBW chromaticity."));
        } else {
            result.value = toValue(monitor.read(DmCtrlGetChromaticity, "Get chromaticity.", chosenColor(query)));
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        const std::uint32_t color = chosenColor(data);
        DmChromaticity chromaticity = monitor.read(DmCtrlGetChromaticity, "Get chromaticity.", color);
        replaceMembers(chromaticity, data);
        monitor.write(NAMED(DmCtrlSetChromaticity), "Set chromaticity.", color, &chromaticity);
    }

    static std::uint32_t chosenColor(const Value& request) noexcept {
        return colorOf(request, colorsRGBW).value_or(DM_COLOR_WHITE);
    }
};

template std::uint32_t serve<Chromaticity>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
