// The fine-contrast mode, by its number.
#include "bridge/Resource.h"

namespace torvo::bridge {

class FineContrast final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupportedFineContrast);
        else if (query.has("available"))
            result.value = Value::array(monitor.enumerate(DmCtrlEnumFineContrast, "Get fine contrast."));
        else if (query.has("count"))
            result.value = monitor.read(DmCtrlGetFineContrastCount, "Get fine contrast.");
        else
            result.value = monitor.read(DmCtrlGetFineContrast, "Get fine contrast.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(!data.isNull(), "data is empty.");
        checkRequest(data.isNumber(), "data must be number.");
        monitor.write(DmCtrlSetFineContrast, "Set fine contrast.", data.asUInt());
    }
};

template std::uint32_t serve<FineContrast>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
