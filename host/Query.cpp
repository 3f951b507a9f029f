#include "host/Query.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "simulator/core/Json.h"

namespace host {

namespace {

using simulator::Json;
using simulator::parseJson;

Json jsonOrText(std::string text) {
    try {
        return parseJson(text);
    } catch (const std::invalid_argument&) {
        return text;
    }
}

std::string objectText(std::string_view query) {
    if (Json::accept(query)) return std::string(query);
    auto decoded = decodePercent(query);
    try {
        parseJson(decoded);
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument("the query is no JSON object: " + std::string(error.what()));
    }
    return decoded;
}

}  // namespace

std::string decodePercent(std::string_view text) {
    std::string decoded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto digits = text.substr(at + 1, 2);
        unsigned char byte{};
        const bool isEncoded = text[at] == '%' && digits.size() == 2 &&
                               std::from_chars(digits.data(), digits.data() + 2, byte, 16).ptr == digits.data() + 2;
        decoded += isEncoded ? static_cast<char>(byte) : text[at];
        if (isEncoded) at += 2;
    }
    return decoded;
}

std::string queryText(std::string_view query) {
    if (query.empty()) return {};
    if (query.front() == '{') return objectText(query);
    auto object = Json::object();
    while (!query.empty()) {
        const auto part = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(part.size() + 1, query.size()));
        if (part.empty()) continue;
        const auto equals = part.find('=');
        object[decodePercent(part.substr(0, equals))] =
            equals == std::string_view::npos ? Json(true) : jsonOrText(decodePercent(part.substr(equals + 1)));
    }
    return simulator::writeJson(object);
}

}  // namespace host
