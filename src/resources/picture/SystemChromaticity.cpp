// The chromaticities of the primaries and the white point of the whole system.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class SystemChromaticity final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    // A query for "RGBW" asks for what is answered anyway.
    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (request.requestQuery.has("supports"))
            result.value = monitor.supports(DmCtrlSupportedSystemChromaticity);
        else
            result.value = toValue(monitor.read(DmCtrlGetSystemChromaticity, "Get system chromaticity."));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        checkRequest(data.get("red").isObject(), "data.red must be object.");
        checkRequest(data.get("green").isObject(), "data.green must be object.");
        checkRequest(data.get("blue").isObject(), "data.blue must be object.");
        checkRequest(data.get("white").isObject(), "data.white must be object.");
        DmPrimaries primaries = monitor.read(DmCtrlGetSystemChromaticity, "Get system chromaticity.");
        replaceMembers(primaries, data);
        monitor.write(DmCtrlSetSystemChromaticity, "Set system chromaticity.", &primaries);
    }
};

template std::uint32_t serve<SystemChromaticity>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
