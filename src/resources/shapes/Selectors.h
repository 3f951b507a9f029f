// Selectors: members of a query or a body that say which part of a setting a request is about.
//
// There is one rule for all of them. A selector that is left out has no value, and the resource knows its default. One
// that is there and cannot be used is refused, never replaced by a default. In a PUT the body's selector counts, else
// the query's, so that what a GET with a query answers can be put back with the same query.
#pragma once

#include <libdmc/picture.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "bridge/Resource.h"

namespace torvo::bridge {

struct NamedColor {
    const char* name;
    std::uint32_t code;
};

inline constexpr NamedColor colorsRGBW[] = {
    {"red", DM_COLOR_RED}, {"green", DM_COLOR_GREEN}, {"blue", DM_COLOR_BLUE}, {"white", DM_COLOR_WHITE}};
inline constexpr std::span<const NamedColor> colorsRGB{colorsRGBW, 3};

class Selector {
 public:
    /// A number, or a text of one.
    constexpr Selector(const char* member, const char* refusal) noexcept : member_(member), refusal_(refusal) {}
    /// The name of one of these colours.
    constexpr Selector(const char* member, const char* refusal, std::span<const NamedColor> colors) noexcept
        : member_(member), refusal_(refusal), colors_(colors) {}

    /// What a query, or an element of a body, selects; "BadRequestError" when it cannot be used.
    std::optional<std::uint32_t> in(const Value& request) const {
        if (!request.has(member_)) return std::nullopt;
        const Value& selector = request.get(member_);
        const auto selected = colors_.empty() ? numberOf(selector) : colorOf(selector);
        checkRequest(selected.has_value(), refusal_);
        return selected;
    }

    /// What a PUT selects.
    std::optional<std::uint32_t> in(const Value& data, const Value& query) const {
        return in(data.has(member_) ? data : query);
    }

 private:
    static std::optional<std::uint32_t> numberOf(const Value& selector) noexcept {
        const std::int64_t number = selector.isNumber() || selector.isString() ? selector.asInt64(-1) : -1;
        if (number < 0 || number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
        return static_cast<std::uint32_t>(number);
    }
    std::optional<std::uint32_t> colorOf(const Value& selector) const noexcept {
        for (const NamedColor& color : colors_)
            if (selector.text() == color.name) return color.code;
        return std::nullopt;
    }

    const char* member_;
    const char* refusal_;
    std::span<const NamedColor> colors_;
};

inline constexpr Selector modeSelector{"mode", "Invalid mode."};
inline constexpr Selector fineContrastSelector{"fineContrast", "Invalid fine contrast."};
inline constexpr Selector indexSelector{"index", "Invalid index."};
inline constexpr Selector depthSelector{"depth", "Invalid bit depth."};
inline constexpr Selector colorSelectorRGB{"color", "Invalid color.", colorsRGB};
inline constexpr Selector colorSelectorRGBW{"color", "Invalid color.", colorsRGBW};

}  // namespace torvo::bridge
