// The targets of the last grayscale checks: the latest, and the one before where the monitor keeps two.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class SelfQCGrayScaleCheckLastTarget final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        constexpr auto action = "Get SelfQC grayscale check last target.";
        const auto [latest, beforeLast] = monitor.read(NAMED(DmCtrlGetSelfQCGSCLastTarget), action);
        result.value = {{"latest", toValue(latest)}};
        if (monitor.read(NAMED(DmCtrlGetSupportedSelfQCGSCLastTargetCount), action) >= 2)
            result.value["beforeLast"] = toValue(beforeLast);
    }
};

template struct Entry<SelfQCGrayScaleCheckLastTarget>;

}  // namespace torvo::bridge
