// The HLG system gamma, and whether it is used.
#include <libdmc/picture.h>

#include "bridge/Resource.h"

namespace torvo::bridge {

class HLGSystemGamma final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (request.requestQuery.has("supports")) {
            result.value = monitor.supports(NAMED(DmCtrlSupportedHLGSystemGamma));
            return;
        }
        const auto enabled = monitor.read(NAMED(DmCtrlGetHLGSystemGammaEnable), "Get HLG system gamma enable.");
        const auto gamma = monitor.read(NAMED(DmCtrlGetHLGSystemGamma), "Get HLG system gamma.");
        result.value = {{"enable", enabled != 0}, {"systemGamma", gamma}};
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        if (const Value& enable = data.get("enable"); enable.isBoolean())
            monitor.write(NAMED(DmCtrlSetHLGSystemGammaEnable), "Set HLG system gamma enable.",
                          std::uint32_t{enable.asBool()});
        if (const Value& gamma = data.get("systemGamma"); isNumber(gamma))
            monitor.write(NAMED(DmCtrlSetHLGSystemGamma), "Set HLG system gamma.", toNumber<double>(gamma));
    }
};

template struct Entry<HLGSystemGamma>;

}  // namespace torvo::bridge
