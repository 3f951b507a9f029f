// The input ports that are shown with an upstream USB port.
#include <libdmc/device.h>

#include "resources/shapes/Lists.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class InputPortUSBSelectionSetting final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedInputPortInterlockedWithUSBSelection)}};
    static constexpr Selector usbSelector{"usbSelection", "usbSelection query required."};
    static constexpr auto getAction = "Get input port interlocked with usb selection.";

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const auto usbSelection = usbSelector.in(request.requestQuery);
        checkRequest(usbSelection.has_value(), "usbSelection query required.");
        const std::uint32_t count = monitor.read(NAMED(DmCtrlGetOutputSegmentCount), getAction);
        result.value = Value::array(
            monitor.readList(NAMED(DmCtrlGetInputPortInterlockedWithUSBSelection), getAction, count, *usbSelection));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data.get("usbSelection")), "usbSelection is not number.");
        const auto ports = toNumbers(data.get("inputPorts"), "inputPorts is not array.");
        monitor.write(
            NAMED(DmCtrlSetInputPortInterlockedWithUSBSelection), "Set input port interlocked with usb selection.",
            toNumber<std::uint32_t>(data.get("usbSelection")), ports.data(), static_cast<std::uint32_t>(ports.size()));
    }
};

template struct Entry<InputPortUSBSelectionSetting>;

}  // namespace torvo::bridge
