// The URIs of the plug-in's resources.
#pragma once

#include <optional>
#include <string>

#include "host/Session.h"
#include "host/server/Http.h"

namespace host::server {

/// The four texts' request that a URI below /pell/ stands for, the body left empty; none when there is no resource at
/// it. What follows the question mark is a query as host/Query.h has it; throws std::invalid_argument for one that is
/// none.
std::optional<Request> requestOf(const HttpRequest& request);

/// For people: why there is none, with the path that was probably meant.
std::string missingResource(const HttpRequest& request);

}  // namespace host::server
