// The one-dimensional look-up tables of the three channels, 8 or 10 bits deep.
#include <libdmc/picture.h>

#include "resources/shapes/LutTables.h"

namespace torvo::bridge {

class LUT1D final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = supports(monitor, query);
        } else if (query.has("maxRawValue")) {
            result.value = monitor.read(NAMED(DmCtrlGetFrontLUTMaxRawValue), "Get front lut max raw value.");
        } else {
            const std::uint32_t depth = checkedDepth(depthSelector.in(query));
            result.value = lutValue(query, [&](std::uint32_t color) {
                return monitor.enumerate(NAMED(DmCtrlGetLUT), "Get LUT.", depth, color);
            });
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& query = request.requestQuery;
        checkRequest(data.isObject() || data.isArray(), "data must be object.");
        const std::uint32_t depth = checkedDepth(depthSelector.in(data, query));
        for (const LutTable& table : lutTables(data, query))
            monitor.write(NAMED(DmCtrlSetLUT), "Set LUT.", depth, table.color, table.values.data(), table.size());
    }

    // Answered whatever else is wrong in the query: a depth that cannot be used is one that is not there.
    static bool supports(const Monitor& monitor, const Value& query) {
        if (query.has("maxRawValue")) return monitor.supports(NAMED(DmCtrlSupportedFrontLUT));
        const bool isDeep = query.get("depth").asInt() == 10;
        return monitor.supports(isDeep ? DmCtrlSupportedLUT10bit : DmCtrlSupportedLUT);
    }

    static std::uint32_t checkedDepth(std::optional<std::uint32_t> selected) {
        const std::uint32_t depth = selected.value_or(8);
        checkRequest(depth == 8 || depth == 10, "Invalid bit depth.");
        return depth;
    }
};

template struct Entry<LUT1D>;

}  // namespace torvo::bridge
