// Runs one request of the page: from the call of an export to the settled promise.
#pragma once

#include <cstdint>

#include "bridge/BridgeTemplate.h"

namespace torvo {

/// Takes a promise from the host, lets the resource handle the texts and settles the promise with the result, exactly
/// once whatever happens. Returns the promise's identifier.
std::uint32_t runRequest(BridgeTemplate& resource, const CallTexts& texts) noexcept;

}  // namespace torvo
