// The input ports that are shown with an upstream USB port.
#include <libdmc/device.h>

#include "resources/shapes/Lists.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class InputPortUSBSelectionSetting final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedInputPortInterlockedWithUSBSelection)}};
    static constexpr auto getAction = "Get input port interlocked with usb selection.";

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t usbSelection = selectedBy(request.requestQuery, "usbSelection query required.");
        const std::uint32_t count = monitor.read(NAMED(DmCtrlGetOutputSegmentCount), getAction);
        result.value = Value::array(
            monitor.readList(NAMED(DmCtrlGetInputPortInterlockedWithUSBSelection), getAction, count, usbSelection));
    }

    // The list that a GET answers can be put back with the same query.
    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        constexpr auto notNumber = "usbSelection is not number.";
        const Value& data = request.data();
        const Value& inBody = data.get("usbSelection");
        checkRequest(!data.has("usbSelection") || isNumber(inBody), notNumber);
        const std::uint32_t usbSelection =
            isNumber(inBody) ? toNumber<std::uint32_t>(inBody) : selectedBy(request.requestQuery, notNumber);
        const auto ports = toNumbers(data.isArray() ? data : data.get("inputPorts"), "inputPorts is not array.");
        monitor.write(NAMED(DmCtrlSetInputPortInterlockedWithUSBSelection),
                      "Set input port interlocked with usb selection.", usbSelection, ports.data(),
                      static_cast<std::uint32_t>(ports.size()));
    }

 private:
    static std::uint32_t selectedBy(const Value& query, const char* refusal) {
        const auto usbSelection = Selector("usbSelection", refusal).in(query);
        checkRequest(usbSelection.has_value(), refusal);
        return *usbSelection;
    }
};

template struct Entry<InputPortUSBSelectionSetting>;

}  // namespace torvo::bridge
