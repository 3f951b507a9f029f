// The three-dimensional look-up table: one colour for each point of its grid.
#include <libdmc/picture.h>

#include <algorithm>
#include <vector>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class LUT3D final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{
        Support{DmCtrlSupported3DLUT},
        Read{"grid", DmCtrlGet3DLUTGridCount, "Get 3D LUT grid levels."},
        List{"levels", DmCtrlGet3DLUTGridLevels, "Get 3D LUT grid levels."},
        Read{"selection", DmCtrlGet3DLUTSelection, "Get 3D LUT selection."},
        Read{"count", DmCtrlGet3DLUTSelectionCount, "Get 3D LUT selection."},
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        result.value = Value::array();
        for (const DmColor& color : monitor.enumerate(DmCtrlGet3DLUTDirect, "Get 3D LUT."))
            result.value.append(Value::array({color.red, color.green, color.blue}));
    }

    // {"enable", "selection"} or one of them, else a table.
    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isPresent(data), "data is empty.");
        if (!data.has("enable") && !data.has("selection")) {
            const std::vector<DmColor> table = directTable(data);
            monitor.write(DmCtrlSet3DLUTDirect, "Set 3D LUT.", table.data(), static_cast<std::uint32_t>(table.size()));
            return;
        }
        const Value& enable = data.get("enable");
        const Value& selection = data.get("selection");
        checkRequest(!data.has("enable") || isBoolean(enable), "data must be array.");
        checkRequest(!data.has("selection") || isNumber(selection), "data must be array.");
        if (data.has("enable")) monitor.write(DmCtrlEnable3DLUT, "Set 3D LUT enabled.", std::uint32_t{enable.asBool()});
        if (data.has("selection"))
            monitor.write(DmCtrlSet3DLUTSelection, "Set 3D LUT selection.", toNumber<std::uint32_t>(selection));
    }

 private:
    static std::vector<DmColor> directTable(const Value& data) {
        checkRequest(data.isArray(), "data must be array.");
        checkRequest(!data.empty(), "data must have object array.");
        std::vector<DmColor> table;
        table.reserve(data.size());
        for (const Value& triple : data.elements()) {
            checkRequest(triple.isArray(), "Each value must be array.");
            const Value::Elements& numbers = triple.elements();
            checkRequest(numbers.size() == 3 && std::all_of(numbers.begin(), numbers.end(),
                                                            [](const Value& number) { return isNumber(number); }),
                         "Each value must be 3 number array.");
            table.push_back({numbers[0].asUInt(), numbers[1].asUInt(), numbers[2].asUInt()});
        }
        return table;
    }
};

template struct Entry<LUT3D>;

}  // namespace torvo::bridge
