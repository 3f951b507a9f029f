// The one-dimensional look-up tables of the three channels, 8 or 10 bits deep.
#include "resources/picture/LutTables.h"

namespace torvo::bridge {

class LUT1D final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        const std::uint32_t depth = bitDepth(query);
        if (query.has("supports"))
            result.value = query.has("maxRawValue")
                               ? monitor.supports(NAMED(DmCtrlSupportedFrontLUT))
                               : monitor.supports(depth == 10 ? DmCtrlSupportedLUT10bit : DmCtrlSupportedLUT);
        else if (query.has("maxRawValue"))
            result.value = monitor.read(NAMED(DmCtrlGetFrontLUTMaxRawValue), "Get front lut max raw value.");
        else
            result.value = lutValue(query, [&](std::uint32_t color) {
                return monitor.enumerate(NAMED(DmCtrlGetLUT), "Get LUT.", depth, color);
            });
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        const std::uint32_t depth = bitDepth(data);
        const auto tables = lutTables(data);
        for (std::size_t i = 0; i < tables.size(); ++i)
            monitor.write(NAMED(DmCtrlSetLUT), "Set LUT.", depth, colorsRGB[i].code, tables[i].data(),
                          static_cast<std::uint32_t>(tables[i].size()));
    }

    static std::uint32_t bitDepth(const Value& request) {
        const std::uint32_t depth = request.has("depth") ? request.get("depth").asUInt() : 8;
        checkRequest(depth == 8 || depth == 10, "Invalid bit depth.");
        return depth;
    }
};

template std::uint32_t serve<LUT1D>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
