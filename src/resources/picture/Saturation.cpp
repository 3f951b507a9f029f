// The saturation of the whole picture, in steps.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Saturation final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupported6ColorsSaturation);
        else if (query.has("range"))
            result.value = monitor.range(DmCtrlGetRange6ColorsSaturation, "Get saturation range.");
        else
            result.value = monitor.read(DmCtrlGet6ColorsSaturation, "Get saturation.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isNumber(), "data must be number.");
        monitor.write(DmCtrlSet6ColorsSaturation, "Set saturation.", data.asUInt());
    }
};

template std::uint32_t serve<Saturation>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
