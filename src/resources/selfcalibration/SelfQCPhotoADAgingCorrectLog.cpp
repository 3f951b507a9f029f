// How a photo sensor that aged was corrected: the entry of the log that the query names, or the first.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Queries.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class SelfQCPhotoADAgingCorrectLog final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlFSSupportedPhotoADAgingCorrectLog)}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t index = indexSelector.in(request.requestQuery).value_or(0);
        result.value = toValue(
            monitor.read(NAMED(DmCtrlFSGetPhotoADAgingCorrectLog), "Get SelfQC Photo AD aging correct log.", index));
    }
};

template struct Entry<SelfQCPhotoADAgingCorrectLog>;

}  // namespace torvo::bridge
