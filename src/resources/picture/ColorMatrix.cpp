// The colour matrices: nine numbers each, in row order.
#include <libdmc/picture.h>

#include <array>

#include "resources/shapes/Queries.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class ColorMatrix final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedColorMatrix},
        Read{"count", DmCtrlGetColorMatrixCount, "Get matrix count."},
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (answerQuery(result, monitor, query, queries)) return;
        result.value = Value::array(monitor.enumerate(DmCtrlGetColorMatrix, "Get matrix.", selectedIndex(query)));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const std::uint32_t index = selectedIndex(request.requestQuery);
        checkRequest(data.isArray(), "data must be array.");
        std::array<double, 9> matrix{};
        checkRequest(data.size() == matrix.size(), "data must have 9 numbers.");
        for (std::size_t i = 0; i < matrix.size(); ++i) {
            checkRequest(isNumber(data.at(i)), "data must have 9 numbers.");
            matrix[i] = toNumber<double>(data.at(i));
        }
        const auto count = static_cast<std::uint32_t>(matrix.size());
        monitor.write(DmCtrlSetColorMatrix, "Set color matrix.", index, matrix.data(), count);
    }

 private:
    static std::uint32_t selectedIndex(const Value& query) {
        const auto index = indexSelector.in(query);
        checkRequest(index.has_value(), "Query requires index.");
        return *index;
    }
};

template struct Entry<ColorMatrix>;

}  // namespace torvo::bridge
