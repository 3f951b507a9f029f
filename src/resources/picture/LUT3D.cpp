// The three-dimensional look-up table: one colour for each point of its grid.
#include <algorithm>
#include <vector>

#include "bridge/Resource.h"

namespace torvo::bridge {

class LUT3D final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(DmCtrlSupported3DLUT);
        } else if (query.has("grid")) {
            result.value = monitor.read(DmCtrlGet3DLUTGridCount, "Get 3D LUT grid levels.");
        } else if (query.has("levels")) {
            result.value = Value::array(monitor.enumerate(DmCtrlGet3DLUTGridLevels, "Get 3D LUT grid levels."));
        } else if (query.has("selection")) {
            result.value = monitor.read(DmCtrlGet3DLUTSelection, "Get 3D LUT selection.");
        } else if (query.has("count")) {
            result.value = monitor.read(DmCtrlGet3DLUTSelectionCount, "Get 3D LUT selection.");
        } else {
            result.value = Value::array();
            for (const DmColor& color : monitor.enumerate(DmCtrlGet3DLUTDirect, "Get 3D LUT."))
                result.value.append(Value::array({color.red, color.green, color.blue}));
        }
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(!data.isNull(), "data is empty.");
        const Value& enable = data.get("enable");
        const Value& selection = data.get("selection");
        if (enable.isBoolean()) monitor.write(DmCtrlEnable3DLUT, "Set 3D LUT enabled.", std::uint32_t{enable.asBool()});
        if (selection.isNumber()) monitor.write(DmCtrlSet3DLUTSelection, "Set 3D LUT selection.", selection.asUInt());
        if (enable.isBoolean() || selection.isNumber()) return;

        const std::vector<DmColor> table = directTable(data);
        monitor.write(DmCtrlSet3DLUTDirect, "Set 3D LUT.", table.data(), static_cast<std::uint32_t>(table.size()));
    }

    static std::vector<DmColor> directTable(const Value& data) {
        checkRequest(data.isArray(), "data must be array.");
        checkRequest(!data.empty(), "data must have object array.");
        std::vector<DmColor> table;
        table.reserve(data.size());
        for (const Value& triple : data.elements()) {
            checkRequest(triple.isArray(), "Each value must be array.");
            const Value::Elements& numbers = triple.elements();
            checkRequest(numbers.size() == 3 && std::all_of(numbers.begin(), numbers.end(),
                                                            [](const Value& number) { return number.isNumber(); }),
                         "Each value must be 3 number array.");
            table.push_back({numbers[0].asUInt(), numbers[1].asUInt(), numbers[2].asUInt()});
        }
        return table;
    }
};

template std::uint32_t serve<LUT3D>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
