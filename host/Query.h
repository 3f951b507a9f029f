// The query of a resource, as a URL and the command line have it.
#pragma once

#include <string>
#include <string_view>

namespace host {

/// The JSON object that the plug-in takes as the query; empty for an empty query.
///
/// Parts are separated by `&`. A `name` alone is true; the value of `name=value` is JSON if it parses as JSON, else a
/// text. Both are percent-encoded; a percent sign without two hexadecimal digits, and every plus sign, stands for
/// itself. A query whose first character is `{` is the whole object, as it stands or percent-encoded.
///
/// Throws std::invalid_argument when a query that begins with `{` is no JSON object.
std::string queryText(std::string_view query);

/// Without percent-encoding; a percent sign without two hexadecimal digits stands for itself.
std::string decodePercent(std::string_view text);

}  // namespace host
