// The picture mode, by its number: 0 to count - 1.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Mode final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupportedMode);
        else if (query.has("count"))
            result.value = monitor.read(DmCtrlGetModeCount, "Get mode.");
        else
            result.value = monitor.read(DmCtrlGetMode, "Get mode.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(!data.isNull(), "data is empty.");
        checkRequest(data.isNumber(), "data must be number.");
        monitor.write(DmCtrlSetMode, "Set mode.", data.asUInt());
    }
};

template std::uint32_t serve<Mode>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
