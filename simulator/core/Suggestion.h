// The name that was probably meant by an unknown one.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace simulator {

/// `, did you mean "Brightness"?` with the known name that differs least, letter case aside, from the unknown one;
/// nothing when none resembles it.
std::string suggestion(std::string_view unknown, std::span<const std::string_view> known);

}  // namespace simulator
