// What `pellhost doctor` knows of libpell, made of libpell's sources and the catalogue when they change: see
// DoctorTables.cmake.
#pragma once

#include <span>
#include <string_view>

#include "runtime/platform/Platform.h"

namespace host {

struct ResourceNeeds {
    std::string_view resource;
    bool tellsSupport;           ///< answers a GET with the query {"supports":true} by true or false
    std::string_view functions;  ///< without any of which a request answers 404, each with a blank in front and behind
};
extern const std::span<const ResourceNeeds> resourceNeeds;

/// All functions that libpell looks up by name, whether or not it can do without.
extern const std::span<const std::string_view> functionsByName;

/// A special token at the start of a path: a folder of the system, or one that a function of libPlugin returns.
struct PathToken {
    std::string_view token;
    torvo::platform::Folder folder{};
    const char* function = nullptr;
};
extern const std::span<const PathToken> pathTokens;

}  // namespace host
