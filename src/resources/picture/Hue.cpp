// The hue of the whole picture, in steps.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Hue final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupported6ColorsHue);
        else if (query.has("range"))
            result.value = monitor.range(DmCtrlGetRange6ColorsHue, "Get hue range.");
        else
            result.value = monitor.read(DmCtrlGet6ColorsHue, "Get hue.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isNumber(), "data must be number.");
        monitor.write(DmCtrlSet6ColorsHue, "Set hue.", data.asUInt());
    }
};

template std::uint32_t serve<Hue>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
