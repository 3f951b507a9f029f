// The files of a built page.
#pragma once

#include <filesystem>
#include <string_view>

#include "host/server/Http.h"

namespace host::server {

/// The file of this path below the folder, a percent-encoded path without a slash in front; of a folder its index.html.
/// 404 for what is not there, leads out of the folder or is no ordinary file; 405 for methods other than GET and HEAD.
/// Nothing is to be cached: the page is being worked at.
HttpResponse staticFile(const std::filesystem::path& folder, std::string_view path, const HttpRequest& request);

}  // namespace host::server
