#pragma once

#include <cstddef>

namespace bench {

/// Blocks and bytes asked of malloc, calloc, realloc and the aligned allocations, also by shared libraries.
struct Allocations {
    std::size_t count = 0;
    std::size_t bytes = 0;
};

/// Of this thread, since it began.
Allocations allocationsSoFar() noexcept;

/// Of this thread, during the call.
template <class Function>
Allocations allocationsOf(Function&& function) {
    const auto before = allocationsSoFar();
    function();
    const auto after = allocationsSoFar();
    return {after.count - before.count, after.bytes - before.bytes};
}

}  // namespace bench
