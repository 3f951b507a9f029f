// What the LEA job has measured, in order: luminance over the time of usage.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class SelfQCLEAData final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        result.value = Value::array();
        for (const DmLEAData& measured : monitor.enumerate(NAMED(DmCtrlGetSelfQCLEAData), "Get SelfQC LEA data."))
            result.value.append(toValue(measured));
    }
};

template struct Entry<SelfQCLEAData>;

}  // namespace torvo::bridge
