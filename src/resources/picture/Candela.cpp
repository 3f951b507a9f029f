// The luminance in cd/m2, and whether the monitor reaches it. A PUT takes the number, alone or as a GET answers it.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Candela final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(DmCtrlSupportedCandela);
        } else if (query.has("range")) {
            result.value = monitor.range(DmCtrlGetCandelaParam, "Get candela parameter.");
        } else {
            const auto [candela, status] = monitor.read(DmCtrlGetCandela, "Get candela.");
            result.value = {{"candela", candela}, {"status", statusText(status)}};
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& candela = data.isObject() ? data.get("candela") : data;
        checkRequest(candela.isNumber(), "data must be number.");
        monitor.write(DmCtrlSetCandela, "Set candela.", candela.asUInt());
    }

    static const char* statusText(std::uint32_t status) noexcept {
        return status == DM_CANDELA_OK ? "ok" : status == DM_CANDELA_UNSUPPORTED ? "unsupported" : "failed";
    }
};

template std::uint32_t serve<Candela>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
