// The name that was probably meant by an unknown one.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace simulator {

/// `, did you mean "Brightness"?` with the known name for which the fewest letters of the unknown one must be inserted,
/// removed or replaced, letter case aside. Nothing when that takes more than a third of its letters (but always one may
/// differ), or when it is longer than 100.
std::string suggestion(std::string_view unknown, std::span<const std::string_view> known);

}  // namespace simulator
