// The colours that queries and bodies name.
#pragma once

#include <libdmc.h>

#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>

#include "pocketjson/Value.h"

namespace torvo::bridge {

struct NamedColor {
    const char* name;
    std::uint32_t code;
};

inline constexpr NamedColor colorsRGBW[] = {
    {"red", DM_COLOR_RED}, {"green", DM_COLOR_GREEN}, {"blue", DM_COLOR_BLUE}, {"white", DM_COLOR_WHITE}};
inline constexpr std::span<const NamedColor> colorsRGB{colorsRGBW, 3};

/// The code of the colour that a query or a body names under "color"; none when it names none of these.
inline std::optional<std::uint32_t> colorOf(const pocketjson::Value& request,
                                            std::span<const NamedColor> colors) noexcept {
    for (const NamedColor& color : colors)
        if (std::string_view(color.name) == request.get("color").text()) return color.code;
    return std::nullopt;
}

}  // namespace torvo::bridge
