// The name that was probably meant by an unknown one.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace simulator {

/// `, did you mean "Brightness"?` with the known name that needs the fewest letters inserted, removed or replaced, letter
/// case aside; nothing when that takes more than a third of the letters of the unknown name (at least one is allowed), or
/// when that name is longer than 100.
std::string suggestion(std::string_view unknown, std::span<const std::string_view> known);

}  // namespace simulator
