// Colours of light, each form of a colour value a table of its own.
#pragma once

#include <libdmc/color.h>
#include <records/Member.h>

namespace companions {

template <>
inline constexpr auto members<DmChromaticity> = std::tuple(Member{"x", &DmChromaticity::x},
                                                           Member{"y", &DmChromaticity::y});

inline constexpr std::tuple colorXYZ(Member{"X", &DmColorValue::X}, Member{"Y", &DmColorValue::Y},
                                     Member{"Z", &DmColorValue::Z});

inline constexpr std::tuple colorXy(Member{"x", &DmColorValue::x}, Member{"y", &DmColorValue::y});

inline constexpr std::tuple colorYxy(Member{"Y", &DmColorValue::luminance}, Member{"x", &DmColorValue::x},
                                     Member{"y", &DmColorValue::y});

/// The whole record, both forms.
template <>
inline constexpr auto members<DmColorValue> = std::tuple_cat(colorXYZ, colorXy,
                                                             std::tuple(Member{"luminance", &DmColorValue::luminance}));

}  // namespace companions
