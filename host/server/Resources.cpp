#include "host/server/Resources.h"

#include <string>
#include <unordered_map>
#include <vector>

#include "host/Query.h"
#include "host/server/ResourcePaths.h"
#include "simulator/core/Suggestion.h"

namespace host::server {

namespace {

constexpr std::string_view prefix = "/pell/";
constexpr std::string_view monitorPath = "Monitors/{product}/{serial}/";
constexpr std::string_view idPath = "/{id}";

std::string resourceAt(const std::string& path) {
    static const auto byPath = [] {
        std::unordered_map<std::string_view, std::string_view> map;
        for (const auto& [resource, template_] : resourcePaths) {
            map.emplace(template_, resource);
            // A file has its identifier only once it is open.
            if (template_.ends_with(idPath))
                map.emplace(template_.substr(0, template_.size() - idPath.size()), resource);
        }
        return map;
    }();
    const auto found = byPath.find(path);
    return found == byPath.end() ? std::string() : std::string(found->second);
}

std::vector<std::string_view> split(std::string_view path) {
    std::vector<std::string_view> segments;
    for (;;) {
        const auto end = path.find('/');
        segments.push_back(path.substr(0, end));
        if (end == std::string_view::npos) return segments;
        path.remove_prefix(end + 1);
    }
}

bool isOfMonitor(const std::vector<std::string_view>& segments) {
    return segments[0] == "Monitors" && segments.size() > 3;
}

/// The path of a monitor's resource.
std::string_view behindMonitor(std::string_view path, const std::vector<std::string_view>& segments) {
    return path.substr(static_cast<std::size_t>(segments[3].data() - path.data()));
}

}  // namespace

std::optional<Request> requestOf(const HttpRequest& http) {
    if (!http.path().starts_with(prefix)) return std::nullopt;
    const auto path = http.path().substr(prefix.size());
    const auto segments = split(path);
    Request request{.method = http.method};
    if (isOfMonitor(segments)) {
        request.product = decodePercent(segments[1]);
        request.serial = decodePercent(segments[2]);
        request.resource = resourceAt(std::string(monitorPath) + std::string(behindMonitor(path, segments)));
    } else {
        request.resource = resourceAt(std::string(path));
        if (request.resource.empty() && segments.size() > 1) {
            request.id = decodePercent(segments.back());
            request.resource = resourceAt(std::string(path.substr(0, path.rfind('/'))) + std::string(idPath));
        }
    }
    if (request.resource.empty()) return std::nullopt;
    request.query = queryText(http.query());
    return request;
}

std::string missingResource(const HttpRequest& http) {
    const auto path = http.path().substr(prefix.size());
    const auto segments = split(path);
    if (!isOfMonitor(segments))
        return "There is no resource at this address. Those of a monitor are below /pell/" + std::string(monitorPath) +
               ", such as Brightness.";
    std::vector<std::string_view> known;
    for (const auto& [resource, template_] : resourcePaths)
        if (template_.starts_with(monitorPath)) known.push_back(template_.substr(monitorPath.size()));
    const auto wanted = decodePercent(behindMonitor(path, segments));
    const auto hint = simulator::suggestion(wanted, known);
    return "No monitor has a resource at \"" + wanted + "\"" + (hint.empty() ? "." : hint);
}

}  // namespace host::server
