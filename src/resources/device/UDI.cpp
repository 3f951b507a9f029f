// The unique device identifier that is kept in the monitor.
#include <libdmc/device.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class UDI final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedUDI), "Support UDI."}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t size = monitor.read(NAMED(DmCtrlGetUDISize), "Get UDI.");
        result.value = monitor.readText(size, NAMED(DmCtrlGetUDI), "Get UDI.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isText(data), "data is not string.");
        monitor.write(NAMED(DmCtrlSetUDI), "Set UDI.", data.text().c_str());
    }
};

template struct Entry<UDI>;

}  // namespace torvo::bridge
