// Look-up tables of the three channels, as JSON: one array, or {"red", "green", "blue"} of arrays.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "bridge/Resource.h"
#include "resources/picture/Colors.h"

namespace torvo::bridge {

using LutTable = std::vector<std::uint32_t>;

/// The numbers of an array; none when the value is no array of numbers.
inline std::optional<LutTable> lutTable(const Value& data) {
    if (!data.isArray()) return std::nullopt;
    LutTable table;
    table.reserve(data.size());
    for (const Value& number : data.elements()) {
        if (!number.isNumber()) return std::nullopt;
        table.push_back(number.asUInt());
    }
    return table;
}

/// The tables of {"red", "green", "blue"}, in the order of `colorsRGB`; refused unless they are equally long.
inline std::array<LutTable, 3> lutTables(const Value& data) {
    std::array<LutTable, 3> tables;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        std::optional<LutTable> table = lutTable(data.get(colorsRGB[i].name));
        checkRequest(table && (i == 0 || table->size() == tables[0].size()), "data must be object.");
        tables[i] = std::move(*table);
    }
    return tables;
}

/// What `read` gives for the colour that the query names, else for all of them.
template <class Read>
Value lutValue(const Value& query, Read read) {
    if (const auto color = colorOf(query, colorsRGB)) return Value::array(read(*color));
    Value tables;
    for (const auto& [name, code] : colorsRGB) tables[name] = Value::array(read(code));
    return tables;
}

}  // namespace torvo::bridge
