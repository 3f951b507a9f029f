// The input port that is shown, or several for a split screen; numbers of the library.
#include <libdmc/device.h>

#include <vector>

#include "resources/shapes/Lists.h"

namespace torvo::bridge {

class InputPort final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{DmCtrlSupportedInputPort}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t count = monitor.read(DmCtrlGetInputPortCount, "Get input ports.");
        result.value = Value::array(monitor.readList(DmCtrlGetInputPorts, "Get input ports.", count));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data) || isArray(data), "data must be number or array.");
        const auto ports =
            isNumber(data) ? std::vector{toNumber<std::uint32_t>(data)} : toNumbers(data, "data must be number array.");
        checkRequest(!ports.empty(), "data is empty.");
        monitor.write(DmCtrlSetInputPorts, "Set input ports.", ports.data(), static_cast<std::uint32_t>(ports.size()));
    }
};

template struct Entry<InputPort>;

}  // namespace torvo::bridge
