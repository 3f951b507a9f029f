// What a resource's source file includes. The file ends with the explicit instantiation of `serve` for its class.
#pragma once

#include <libdmc.h>

#include <type_traits>

#include "bridge/Errors.h"
#include "bridge/MonitorBridgeTemplate.h"
#include "bridge/Runner.h"

namespace torvo::bridge {

using pocketjson::Value;

template <class Resource>
std::uint32_t serve([[maybe_unused]] const char* resourcePath, const CallTexts& texts) noexcept {
    if constexpr (std::is_base_of_v<MonitorBridgeTemplate, Resource>) {
        Resource resource(resourcePath);
        return runRequest(resource, texts);
    } else {
        Resource resource;
        return runRequest(resource, texts);
    }
}

}  // namespace torvo::bridge
