// JSON, the form of scenarios, instructions and recordings.
//
// This header only declares it: <nlohmann/json.hpp> takes long to compile, so only the files that build or take apart
// JSON include it.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace simulator {

using Json = nlohmann::json;

/// Throws std::invalid_argument when the text is not JSON, or nested so deeply that it is no sensible document.
Json parseJson(std::string_view text);

/// The same for texts of others: what parseJson refuses becomes a discarded value, see nlohmann::json::is_discarded().
Json parseIfJson(std::string_view text);

/// Compact JSON. Bytes that are not UTF-8 become replacement characters.
std::string writeJson(const Json& json);

/// Indented JSON for people: a list of numbers stands on one line. Bytes that are not UTF-8 as above.
std::string formatJson(const Json& json);

}  // namespace simulator
