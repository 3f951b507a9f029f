// The table of exports as data.
#pragma once

#include <array>
#include <cstdint>

namespace torvo::exports {

enum Methods : unsigned { Get = 1, Put = 2, Post = 4, Delete = 8 };

struct ResourceRow {
    std::uint16_t ordinal;
    const char* name;
    const char* path;   ///< empty when the resource is not about one monitor
    unsigned methods;   ///< the methods that it serves; every other one answers 405
    const char* entry;  ///< the export whose entry this is: its own name, or for an alias the other's
};

inline constexpr auto resourceTable = std::to_array<ResourceRow>({
#define RESOURCE(ordinal, name, path, methods) {ordinal, #name, path, methods, #name},
#define ALIAS(ordinal, name, other, path, methods) {ordinal, #name, path, methods, #other},
#include "exports/ResourceTable.inc"
#undef RESOURCE
#undef ALIAS
});

}  // namespace torvo::exports
