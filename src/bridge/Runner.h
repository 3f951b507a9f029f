// Runs one request of the page: from the call of an export to the settled promise.
#pragma once

#include <cstdint>

#include "bridge/BridgeTemplate.h"

namespace torvo {

/// Takes a promise from the host, lets the resource handle the texts and settles the promise with the result, exactly
/// once whatever happens. Returns the promise's identifier.
std::uint32_t runRequest(BridgeTemplate& resource, const CallTexts& texts) noexcept;

namespace bridge {

/// What the export of a resource calls: runs one request on a new `Resource`. Each resource's source file instantiates
/// it for its class, so that the table of exports needs the class's name only.
template <class Resource>
std::uint32_t serve(const char* resourcePath, const CallTexts& texts) noexcept;

}  // namespace bridge

}  // namespace torvo
