#include "host/server/Http.h"

#include <charconv>
#include <nlohmann/json.hpp>

#include "simulator/core/Json.h"

namespace host::server {

HttpResponse errorResponse(unsigned status, std::string_view name, std::string_view message) {
    const simulator::Json envelope = {{"error", {{"name", name}, {"message", message}}}, {"value", nullptr}};
    return {.status = status, .type = "application/json", .body = simulator::writeJson(envelope)};
}

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

}  // namespace host::server
