// Filled in by the build, from the catalogue.
#pragma once

#include <span>
#include <string_view>

namespace host::server {

struct ResourcePath {
    std::string_view resource;
    std::string_view path;  ///< such as "Monitors/{product}/{serial}/Brightness"
};

extern const std::span<const ResourcePath> resourcePaths;

}  // namespace host::server
