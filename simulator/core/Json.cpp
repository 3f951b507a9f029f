#include "simulator/core/Json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace simulator {

namespace {

/// JSON's recursive users (copies, output) stay far within any stack at this depth.
constexpr int maximumDepth = 200;

bool isTooDeep(std::string_view text) {
    int depth = 0;
    bool isInText = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto letter = text[at];
        if (letter == '"') isInText = !isInText;
        if (isInText) {
            if (letter == '\\') ++at;
        } else if (letter == '[' || letter == '{') {
            if (++depth > maximumDepth) return true;
        } else if (letter == ']' || letter == '}') {
            --depth;
        }
    }
    return false;
}

bool isListOfNumbers(const Json& json) {
    return json.is_array() && std::all_of(json.begin(), json.end(), [](const Json& item) { return item.is_number(); });
}

void appendFormatted(std::string& text, const Json& json, std::size_t indent) {
    if (!json.is_structured() || json.empty()) {
        text += writeJson(json);
        return;
    }
    const auto onOneLine = isListOfNumbers(json);
    const auto lineBreak = onOneLine ? "" : "\n" + std::string(indent + 2, ' ');
    text += json.is_array() ? "[" : "{";
    std::string separator = lineBreak;
    for (auto item = json.begin(); item != json.end(); ++item) {
        text += separator;
        if (json.is_object()) text += writeJson(item.key()) + ": ";
        appendFormatted(text, *item, indent + 2);
        separator = onOneLine ? ", " : "," + lineBreak;
    }
    if (!onOneLine) text += "\n" + std::string(indent, ' ');
    text += json.is_array() ? "]" : "}";
}

}  // namespace

Json parseJson(std::string_view text) {
    // The library's own hook for the depth makes the parser go through a list again for each object in it.
    if (isTooDeep(text)) throw std::invalid_argument("JSON is nested too deeply");
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {
        // The message repeats what was read last, which may be long.
        constexpr std::size_t maximumLength = 200;
        throw std::invalid_argument("not JSON: " + std::string(error.what()).substr(0, maximumLength));
    }
}

Json parseIfJson(std::string_view text) {
    return Json::parse(isTooDeep(text) ? std::string_view() : text, nullptr, false);
}

std::string writeJson(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string formatJson(const Json& json) {
    std::string text;
    appendFormatted(text, json, 0);
    return text;
}

}  // namespace simulator
