// The luminance in cd/m2, and whether the monitor reaches it. A PUT takes the number, alone or as a GET answers it.
#include <libdmc/picture.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class Candela final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedCandela},
        Range{DmCtrlGetCandelaParam, "Get candela parameter."},
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const auto [candela, status] = monitor.read(DmCtrlGetCandela, "Get candela.");
        result.value = {{"candela", candela}, {"status", statusText(status)}};
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& candela = data.isObject() ? data.get("candela") : data;
        checkRequest(isNumber(candela), "data must be number.");
        monitor.write(DmCtrlSetCandela, "Set candela.", toNumber<std::uint32_t>(candela));
    }

 private:
    static const char* statusText(std::uint32_t status) noexcept {
        return status == DM_CANDELA_OK ? "ok" : status == DM_CANDELA_UNSUPPORTED ? "unsupported" : "failed";
    }
};

template struct Entry<Candela>;

}  // namespace torvo::bridge
