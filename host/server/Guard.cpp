#include "host/server/Guard.h"

#include <algorithm>
#include <regex>

namespace host::server {

namespace {

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return text;
}

bool contains(const std::vector<std::string>& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

HttpResponse forbidden(std::string_view message) {
    return errorResponse(403, "Forbidden", message);
}

}  // namespace

Guard::Guard(std::uint16_t port, std::vector<std::string> origins) : origins_(std::move(origins)) {
    for (const auto name : {"127.0.0.1", "[::1]", "localhost"}) {
        hosts_.push_back(name + (":" + std::to_string(port)));
        if (port == 80) hosts_.push_back(name);  // which addresses leave out
    }
}

bool Guard::isOrigin(const std::string& text) {
    static const std::regex form(R"(([a-z][a-z0-9+.-]*)://([a-z0-9._~-]+|\[[0-9a-f:]+\])(:[0-9]{1,5})?)");
    std::smatch parts;
    if (!std::regex_match(text, parts, form)) return false;
    return !(parts[1] == "http" && parts[3] == ":80") && !(parts[1] == "https" && parts[3] == ":443");
}

bool Guard::isNamed(const std::string& origin) const {
    return contains(origins_, origin);
}

std::optional<HttpResponse> Guard::refusal(const HttpRequest& request) const {
    if (!contains(hosts_, lowerCase(request.host))) return forbidden("The Host of the request is not this address.");
    const auto isOwn = [&] {
        constexpr std::string_view scheme = "http://";
        return request.origin.starts_with(scheme) && contains(hosts_, request.origin.substr(scheme.size()));
    };
    if (!request.origin.empty()) {
        if (isNamed(request.origin) || isOwn()) return std::nullopt;
        return forbidden("The request is of another page. Name its origin with --origin if it may ask.");
    }
    const auto site = lowerCase(request.fetchSite);
    if (site.empty() || site == "same-origin" || site == "none") return std::nullopt;
    return forbidden("The request is of another page.");
}

std::optional<HttpResponse> Guard::preflight(const HttpRequest& request) const {
    if (request.method != "OPTIONS" || request.requestedMethod.empty() || !isNamed(request.origin)) return std::nullopt;
    HttpResponse response{.status = 204};
    response.fields = {{"Access-Control-Allow-Methods", "GET, PUT, POST, DELETE"},
                       {"Access-Control-Allow-Headers", "Content-Type, Last-Event-ID"},
                       {"Access-Control-Max-Age", "600"}};
    if (!request.requestedPrivateNetwork.empty())
        response.fields.emplace_back("Access-Control-Allow-Private-Network", "true");
    return response;
}

std::vector<std::pair<std::string, std::string>> Guard::corsFields(const HttpRequest& request) const {
    if (origins_.empty()) return {};
    if (!isNamed(request.origin)) return {{"Vary", "Origin"}};
    return {{"Vary", "Origin"}, {"Access-Control-Allow-Origin", request.origin}};
}

}  // namespace host::server
