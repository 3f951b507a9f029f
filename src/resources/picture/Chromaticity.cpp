// The chromaticity of the white point or of a primary.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Queries.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class Chromaticity final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    struct ChromaticityRange {
        static constexpr auto member = "range";

        Value answer(const Monitor& monitor) const {
            const auto [minimum, maximum] = monitor.read(DmCtrlGetRangeChromaticity, "Get chromaticity range.");
            return {{"x", {{"min", minimum.x}, {"max", maximum.x}}}, {"y", {{"min", minimum.y}, {"max", maximum.y}}}};
        }
    };

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedChromaticity},
        ChromaticityRange{},
        Read{"RGBW", DmCtrlGetRGBWChromaticities, "Get RGBW chromaticity."},
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        result.value = toValue(read(monitor, colorSelectorRGBW.in(request.requestQuery).value_or(DM_COLOR_WHITE)));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        const std::uint32_t color = colorSelectorRGBW.in(data, request.requestQuery).value_or(DM_COLOR_WHITE);
        DmChromaticity chromaticity = read(monitor, color);
        replaceMembers(chromaticity, data);
        monitor.write(NAMED(DmCtrlSetChromaticity), "Set chromaticity.", color, &chromaticity);
    }

 private:
    static DmChromaticity read(const Monitor& monitor, std::uint32_t color) {
        return monitor.read(DmCtrlGetChromaticity, "Get chromaticity.", color);
    }
};

template struct Entry<Chromaticity>;

}  // namespace torvo::bridge
