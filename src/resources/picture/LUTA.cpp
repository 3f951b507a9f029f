// The look-up tables "A" of the three channels.
#include "resources/picture/LutTables.h"

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

    // One table under the query's colour, or all three.
    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        if (const auto color = colorOf(request.requestQuery, colorsRGB); color && data.isArray()) {
            const auto table = lutTable(data);
            checkRequest(table.has_value(), "data must be object.");
            write(monitor, *color, *table);
            return;
        }
        checkRequest(data.isObject(), "data must be object.");
        const auto tables = lutTables(data);
        for (std::size_t i = 0; i < tables.size(); ++i) write(monitor, colorsRGB[i].code, tables[i]);
    }

    static void write(const Monitor& monitor, std::uint32_t color, const LutTable& table) {
        monitor.write(NAMED(DmCtrlSetLUTAData), "Set LUT(A).", color, table.data(),
                      static_cast<std::uint32_t>(table.size()));
    }
};

template std::uint32_t serve<LUTA>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
