// The signal at each input port that is shown: its timing, resolution and what it says of its colours.
#include <libdmc/device.h>
#include <records/device.h>

#include <string_view>

#include "bridge/MonitorCriticalSection.h"
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class SignalInformation final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        const MonitorCriticalSection section(monitor);
        const std::uint32_t count = monitor.read(DmCtrlGetInputPortCount, "Get input ports.");
        const bool selects = selectsPortFirst(monitor);
        result.value = Value::array();
        for (const std::uint32_t port :
             monitor.readList(DmCtrlGetInputPorts, "Get input ports.", std::min(count, Monitor::mostCalls))) {
            if (selects)
                monitor.write(NAMED(DmCtrlSetTargetSelectionInputPort), "Set target selection input port.", port);
            result.value.append(signalAt(monitor, port));
        }
    }

    // Some products measure the port that was selected before.
    static bool selectsPortFirst(const Monitor& monitor) {
        const std::string_view product = monitor.product;
        const std::string_view model = product.substr(0, product.find('-'));
        return (model == "TQ271" || model == "TQ321") && monitor.isNewer(NAMED(DmCtrlSupportedTargetSelection));
    }

    static Value signalAt(const Monitor& monitor, std::uint32_t port) {
        const auto information = monitor.read(NAMED(DmCtrlGetSignalInformation), "Get signal information.", port);
        const auto resolution = monitor.read(NAMED(DmCtrlGetSignalResolution), "Get signal resolution.", port);
        const auto frame = monitor.read(NAMED(DmCtrlGetSignalInfoFrame), "Get signal info frame.", port);
        Value signal = toValue(information);
        signal["inputPort"] = port;
        signal["resolution"] = toValue(resolution);
        const Value infoFrame = toValue(frame);
        for (const auto& [name, value] : infoFrame.members()) signal[name] = value;
        return signal;
    }
};

template struct Entry<SignalInformation>;

}  // namespace torvo::bridge
