// Which target a self-calibration uses. Monitors with modes have an index of a target, older ones an index with a flag
// for fine contrast.
#include <libdmc/picture.h>
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class SelfCalibrationIndex final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr Step getIndex{DmCtrlGetSelfIndex, "Get self index."};
    static constexpr Step getTargetIndex{DmCtrlGetSelfTargetIndex, "Get self target index."};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(DmCtrlSupportedSelfCalibrationScheduleV2);
            return;
        }
        const bool hasModes = monitor.isNewer(DmCtrlSupportedMode);
        if (query.has("count")) {
            result.value = hasModes ? monitor.read(DmCtrlGetSelfTargetCount, getTargetIndex.action)
                                    : monitor.read(DmCtrlGetSelfIndexCount, getIndex.action);
        } else if (hasModes) {
            result.value = monitor.read(getTargetIndex.function, getTargetIndex.action);
        } else {
            const auto [index, fineContrast] = monitor.read(getIndex.function, getIndex.action);
            result.value = {{"index", index}, {"fineContrast", fineContrast}};
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isPresent(data), "data is empty.");
        if (monitor.isNewer(DmCtrlSupportedMode)) {
            checkRequest(isNumber(data), "data must be number.");
            monitor.write(DmCtrlSetSelfTargetIndex, "Set self target index.", toNumber<std::uint32_t>(data));
        } else {
            const Value& index = data.get("index");
            const Value& fineContrast = data.get("fineContrast");
            checkRequest(isNumber(index) && isNumber(fineContrast), "data must be object.");
            monitor.write(DmCtrlSetSelfIndex, "Set self index.", toNumber<std::int32_t>(index),
                          toNumber<std::uint32_t>(fineContrast));
        }
    }
};

template struct Entry<SelfCalibrationIndex>;

}  // namespace torvo::bridge
