// The lightness of six colours, in steps; set all at once.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class SixColorsLightness final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupported6ColorsLightness);
        else if (query.has("range"))
            result.value = monitor.range(DmCtrlGetRange6ColorsLightness, "Get 6 colors lightness range.");
        else
            result.value = toValue(monitor.read(DmCtrlGet6ColorsAllLightness, "Get 6 colors lightness."));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        DmSixColors colors = monitor.read(DmCtrlGet6ColorsAllLightness, "Get 6 colors lightness.");
        replaceMembers(colors, data);
        monitor.write(DmCtrlSet6ColorsAllLightness, "Set 6 colors lightness.", &colors);
    }
};

template std::uint32_t serve<SixColorsLightness>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
