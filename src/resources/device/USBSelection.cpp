// The upstream USB port that was selected, and the one in use.
#include <libdmc/device.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class USBSelection final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedUSBSelection},
        Support{"supportsActive", NAMED(DmCtrlSupportedUSBSelectionActive)},
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const auto selected = monitor.read(DmCtrlGetUSBSelection, "Get USB selection.");
        const auto active = monitor.read(NAMED(DmCtrlGetUSBSelectionActive), "Get USB selection active.");
        result.value = {{"usbSelection", selected}, {"usbSelectionActive", active}};
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& selection = request.data().get("usbSelection");
        checkRequest(isNumber(selection), "usbSelection must be number.");
        monitor.write(DmCtrlSetUSBSelection, "Set USB selection.", toNumber<std::uint32_t>(selection));
    }
};

template struct Entry<USBSelection>;

}  // namespace torvo::bridge
