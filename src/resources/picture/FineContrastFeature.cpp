// The features that work in each fine-contrast mode.
#include <libdmc/picture.h>

#include "resources/shapes/PerMode.h"

namespace torvo::bridge {

class FineContrastFeature final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (const auto selected = fineContrastSelector.in(request.requestQuery)) {
            result.value = entry(monitor, *selected);
            return;
        }
        result.value = Value::array();
        for (const std::uint32_t mode : FineContrasts::numbers(monitor, "")) result.value.append(entry(monitor, mode));
    }

    static Value entry(const Monitor& monitor, std::uint32_t mode) {
        Value feature = Value::object();
        for (const auto& [name, code] : features)
            feature[name] = monitor.supports(NAMED(DmCtrlSupportedFCFunction), mode, code);
        return {{"fineContrast", mode}, {"feature", std::move(feature)}};
    }

    struct Feature {
        const char* name;
        std::uint32_t code;
    };
    static constexpr Feature features[] = {
        {"brightness", 0},
        {"contrast", 1},
        {"colorTemperature", 2},
        {"gamma", 3},
        {"saturation", 4},
        {"hue", 5},
        {"gain", 6},
        {"extendContrast", 7},
        {"sharpness", 8},
        {"blackLevel", 9},
        {"6colorsAdjustment", 14},
        {"reset", 15},
        {"lumisaveOptimizer2", 26},
        {"autoLumisave", 27},
    };
};

template struct Entry<FineContrastFeature>;

}  // namespace torvo::bridge
