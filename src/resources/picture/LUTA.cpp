// The look-up tables "A" of the three channels.
#include <libdmc/picture.h>

#include "resources/shapes/LutTables.h"

namespace torvo::bridge {

class LUTA final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(NAMED(DmCtrlSupportedLUTAData));
        else
            result.value = lutValue(query, [&](std::uint32_t color) {
                return monitor.enumerate(NAMED(DmCtrlGetLUTAData), "Get LUT(A).", color);
            });
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        for (const LutTable& table : lutTables(request.data(), request.requestQuery))
            monitor.write(NAMED(DmCtrlSetLUTAData), "Set LUT(A).", table.color, table.values.data(), table.size());
    }
};

template struct Entry<LUTA>;

}  // namespace torvo::bridge
