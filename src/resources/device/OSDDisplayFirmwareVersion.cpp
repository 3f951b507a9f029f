// The firmware version of each display device, or all of them in one text.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Lists.h"

namespace torvo::bridge {

class OSDDisplayFirmwareVersion final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr Step count{NAMED(DmCtrlGetOSDDisplayFirmwareVersionsCount), "Get OSD display firmware version."};
    static constexpr std::tuple queries{
        SupportByCount{count.function},
        Text{"string", NAMED(DmCtrlGetOSDDisplayFirmwareVersionsStringSize),
             NAMED(DmCtrlGetOSDDisplayFirmwareVersionsString), "Get OSD display firmware version string."},
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t devices = monitor.read(count.function, count.action);
        result.value = Value::array();
        for (const DmDisplayFirmwareVersion& version :
             monitor.readList(NAMED(DmCtrlGetOSDDisplayFirmwareVersions), count.action, devices))
            result.value.append(toValue(version));
    }
};

template struct Entry<OSDDisplayFirmwareVersion>;

}  // namespace torvo::bridge
