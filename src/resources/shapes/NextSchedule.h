// When a quality-control job runs next: after so much usage, or at a date.
#pragma once

#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

/// A Resource has the number of its `job`.
template <class Resource>
class NextSchedule : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        constexpr std::uint32_t byUsage = 1;
        const DmSelfQCNextSchedule schedule =
            monitor.read(NAMED(DmCtrlGetSelfQCNextSchedule), "Get SelfQC next schedule.", Resource::job);
        if (schedule.type == byUsage)
            result.value["usageTime"] = toValue(schedule.usageTime);
        else
            result.value = toValue(schedule.date);
        result.value["type"] = schedule.type;
    }
};

}  // namespace torvo::bridge
