// What the export of a resource calls.
#pragma once

#include <cstdint>
#include <type_traits>

#include "bridge/MonitorBridgeTemplate.h"
#include "bridge/Runner.h"

namespace torvo::bridge {

/// Runs one request on a new `Resource`. Each resource's source file ends with `template struct Entry<Resource>;`, so
/// that the table of exports needs the class's name only.
template <class Resource>
struct Entry {
    static std::uint32_t serve(const char* resourcePath, const CallTexts& texts) noexcept;
};

template <class Resource>
std::uint32_t Entry<Resource>::serve([[maybe_unused]] const char* resourcePath, const CallTexts& texts) noexcept {
    if constexpr (std::is_base_of_v<MonitorBridgeTemplate, Resource>) {
        Resource resource(resourcePath);
        return runRequest(resource, texts);
    } else {
        Resource resource;
        return runRequest(resource, texts);
    }
}

}  // namespace torvo::bridge
