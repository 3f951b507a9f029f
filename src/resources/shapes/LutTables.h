// Look-up tables of the three channels, as JSON: one array, or {"red", "green", "blue"} of arrays.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

/// The table of one channel.
struct LutTable {
    std::uint32_t color;
    std::vector<std::uint32_t> values;

    std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(values.size()); }
};

/// What a GET answers: the table that `read` gives for the colour that the query selects, else those of all channels.
template <class Read>
Value lutValue(const Value& query, Read read) {
    if (const auto color = colorSelectorRGB.in(query)) return Value::array(read(*color));
    Value tables;
    for (const auto& [name, code] : colorsRGB) tables[name] = Value::array(read(code));
    return tables;
}

/// The table of an array of numbers.
inline LutTable lutTable(std::uint32_t color, const Value& data) {
    checkRequest(data.isArray(), "data must be object.");
    LutTable table{color, {}};
    table.values.reserve(data.size());
    for (const Value& number : data.elements()) {
        checkRequest(isNumber(number), "data must be object.");
        table.values.push_back(toNumber<std::uint32_t>(number));
    }
    return table;
}

/// The tables of a PUT: that of the selected colour if the data is an array, else those of {"red", "green", "blue"},
/// which are equally long.
inline std::vector<LutTable> lutTables(const Value& data, const Value& query) {
    std::vector<LutTable> tables;
    const auto color = colorSelectorRGB.in(query);
    if (data.isArray() && color) {
        tables.push_back(lutTable(*color, data));
        return tables;
    }
    checkRequest(data.isObject(), "data must be object.");
    for (const auto& [name, code] : colorsRGB) tables.push_back(lutTable(code, data.get(name)));
    for (const LutTable& table : tables) checkRequest(table.size() == tables[0].size(), "data must be object.");
    return tables;
}

}  // namespace torvo::bridge
