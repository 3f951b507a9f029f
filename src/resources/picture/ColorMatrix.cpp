// The colour matrices: nine numbers each, in row order.
#include <array>

#include "bridge/Resource.h"

namespace torvo::bridge {

class ColorMatrix final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupportedColorMatrix);
        else if (query.has("count"))
            result.value = monitor.read(DmCtrlGetColorMatrixCount, "Get matrix count.");
        else
            result.value = Value::array(monitor.enumerate(DmCtrlGetColorMatrix, "Get matrix.", chosenIndex(query)));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const std::uint32_t index = chosenIndex(request.requestQuery);
        checkRequest(data.isArray(), "data must be array.");
        std::array<double, 9> matrix{};
        checkRequest(data.size() == matrix.size(), "data must have 9 numbers.");
        for (std::size_t i = 0; i < matrix.size(); ++i) {
            checkRequest(data.at(i).isNumber(), "data must have 9 numbers.");
            matrix[i] = data.at(i).asDouble();
        }
        const auto count = static_cast<std::uint32_t>(matrix.size());
        monitor.write(DmCtrlSetColorMatrix, "Set color matrix.", index, matrix.data(), count);
    }

    static std::uint32_t chosenIndex(const Value& query) {
        checkRequest(query.get("index").isNumber(), "Query requires index.");
        return query.get("index").asUInt();
    }
};

template std::uint32_t serve<ColorMatrix>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
