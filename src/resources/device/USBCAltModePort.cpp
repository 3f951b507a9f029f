// The USB-C ports that carry a video signal.
#include <libdmc/device.h>

#include "resources/shapes/Lists.h"

namespace torvo::bridge {

class USBCAltModePort final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr Step count{NAMED(DmCtrlGetUSBCAltModePortCount), "Get USB-C alt mode port."};
    static constexpr std::tuple queries{SupportByCount{count.function}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t ports = monitor.read(count.function, count.action);
        result.value = Value::array(monitor.readList(NAMED(DmCtrlGetUSBCAltModePort), count.action, ports));
    }
};

template struct Entry<USBCAltModePort>;

}  // namespace torvo::bridge
