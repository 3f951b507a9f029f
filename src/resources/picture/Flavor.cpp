// The flavor of the picture, and the one that the current mode has preset.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Flavor final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(DmCtrlSupportedFlavor);
        } else if (query.has("preset")) {
            const std::uint32_t mode = monitor.read(DmCtrlGetMode, "Get mode.");
            result.value = monitor.read(DmCtrlGetPresetFlavor, "Get preset flavor.", mode);
        } else {
            result.value = monitor.read(DmCtrlGetFlavor, "Get flavor.");
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isNumber(), "data must be number.");
        monitor.write(DmCtrlSetFlavor, "Set flavor.", data.asUInt());
    }
};

template std::uint32_t serve<Flavor>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
