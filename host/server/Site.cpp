#include "host/server/Site.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/server/Resources.h"
#include "host/server/StaticFiles.h"

namespace host::server {

namespace {

/// A queue for each monitor: one that is updated answers others after minutes. A browser asks six at once.
constexpr WorkPool::Limits poolLimits{.threads = 128, .running = 8, .waiting = 1024};

/// The lab's own requests never wait for a monitor, and must not wait for those that do. Recordings take long, too.
constexpr WorkPool::Limits labPoolLimits{.threads = 3, .running = 2, .waiting = 64};

HttpResponse headOfStream() {
    return {.type = "text/event-stream", .endsConnection = true};
}

HttpResponse notFound() {
    return errorResponse(404, "NotFound", "There is nothing at this address.");
}

HttpResponse labIsMissing() {
    return errorResponse(404, "NotFound",
                         "The lab, and the client for pages, are not beside this pellhost: scripts/lab builds them.");
}

HttpResponse methodNotAllowed(std::string allowed) {
    auto response = errorResponse(405, "MethodNotAllowed", "There is no such method at this address.");
    response.fields.emplace_back("Allow", std::move(allowed));
    return response;
}

HttpResponse redirect(std::string to) {
    HttpResponse response{.status = 302};
    response.fields = {{"Location", std::move(to)}};
    return response;
}

/// The plug-in takes any other method for a GET.
bool isResourceMethod(const std::string& method) {
    return method == "GET" || method == "PUT" || method == "POST" || method == "DELETE";
}

/// The lab marks its own requests in its timeline; nothing depends on it.
bool isOfLab(const HttpRequest& request) {
    constexpr std::string_view scheme = "http://";
    if (!request.referer.starts_with(scheme)) return false;
    const auto path = request.referer.find('/', scheme.size());
    return path != std::string::npos && request.referer.compare(path, 5, "/lab/") == 0;
}

/// The name of a monitor's queue.
std::string monitor(const std::string& product, const std::string& serial) {
    return product + "/" + serial;
}

/// Small enough to be taken apart on the network's thread.
constexpr std::size_t smallLine = 64 * 1024;

/// The monitor that a line of a batch names; empty when it names none, or is large.
std::string monitorOf(const std::string& line) {
    if (line.size() > smallLine) return {};
    const auto json = parseIfJson(line);
    const auto texts = json.is_object() ? json.value("texts", Json()) : Json();
    if (!texts.is_array() || texts.size() < 2 || !texts[1].is_string()) return {};
    const auto parameters = parseIfJson(texts[1].get_ref<const std::string&>());
    const auto text = [&](const char* member) {
        const auto value = parameters.is_object() ? parameters.value(member, Json()) : Json();
        return value.is_string() ? value.get<std::string>() : std::string();
    };
    return text("serial").empty() ? std::string() : monitor(text("product"), text("serial"));
}

/// The plug-in's own answer.
HttpResponse responseOf(const Json& exchange) {
    const auto& responses = exchange.at("responses");
    if (responses.size() != 1)
        return errorResponse(500, "HostError",
                             "the plug-in answered " + std::to_string(responses.size()) + " times, not once");
    const auto status = responses[0].at("status").get<unsigned>();
    const auto& text = responses[0].at("text");
    if (status < 200 || status > 599 || !text.is_string())
        return errorResponse(500, "HostError", "the plug-in's answer is no answer");
    return {.status = status, .type = "application/json", .body = text.get<std::string>()};
}

Route events(EventLog& log, const HttpRequest& head) {
    if (head.method == "HEAD") return {headOfStream()};
    if (head.method != "GET") return {methodNotAllowed("GET, HEAD")};
    constexpr std::string_view since = "since=";
    const auto last = !head.lastEventId.empty()         ? std::string_view(head.lastEventId)
                      : head.query().starts_with(since) ? head.query().substr(since.size())
                                                        : std::string_view();
    return {Events{log, log.after(last)}};
}

}  // namespace

Site::Site(SiteOptions options, Journal& journal, Lab& lab, EventLog& events)
    : options_(std::move(options)),
      journal_(journal),
      lab_(lab),
      events_(events),
      guard_(0, {}),
      pool_(poolLimits),
      labPool_(labPoolLimits) {}

std::size_t Site::close() {
    return pool_.close() + labPool_.close();
}

void Site::finish() {
    pool_.finish();
    labPool_.finish();
}

Route Site::route(const HttpRequest& head) try {
    if (auto refusal = guard_.refusal(head)) return {std::move(*refusal)};
    auto route = [&]() -> Route {
        if (auto preflight = guard_.preflight(head)) return {std::move(*preflight)};
        return routeAllowed(head);
    }();
    route.fields = guard_.corsFields(head);
    return route;
} catch (const std::exception& error) {
    return {errorResponse(500, "HostError", error.what())};
}

Route Site::routeAllowed(const HttpRequest& head) {
    const auto path = head.path();
    if (!path.starts_with('/')) return {errorResponse(400, "BadRequest", "The request's target is no path.")};
    if (path == "/pell" || path == "/pell/")
        return {errorResponse(404, "NotFound", "The resources are below this address, such as /pell/Monitors.")};
    if (path.starts_with("/pell/")) return routeOfPlugin(head);
    if (path.starts_with("/lab/")) return routeOfLab(head);
    if (path == "/lab") return {redirect("/lab/")};
    if (options_.forwards) return {Forward()};
    if (!options_.page.empty()) return {staticFile(options_.page, path.substr(1), head)};
    return path == "/" ? Route{redirect("/lab/")} : Route{notFound()};
}

Route Site::routeOfPlugin(const HttpRequest& head) {
    if (head.path() == "/pell/events") return events(events_, head);
    std::optional<Request> request;
    try {
        request = requestOf(head);
    } catch (const std::invalid_argument& error) {
        return {errorResponse(400, "BadRequest", error.what())};
    }
    if (!request) return {errorResponse(404, "NotFound", missingResource(head))};
    if (request->method == "HEAD") request->method = "GET";
    if (!isResourceMethod(request->method)) return {methodNotAllowed("GET, HEAD, PUT, POST, DELETE")};
    auto queue = request->serial.empty() ? request->resource : monitor(request->product, request->serial);
    const auto answer = [this, request = std::move(*request)](const HttpRequest& http) {
        auto whole = request;
        whole.body = http.body;
        return ask(whole, isOfLab(http) ? "lab" : "http");
    };
    return {on(pool_, answer, std::move(queue))};
}

Route Site::routeOfLab(const HttpRequest& head) {
    constexpr std::string_view api = "/lab/api/";
    if (!head.path().starts_with(api)) {
        std::error_code error;
        if (!std::filesystem::is_directory(lab_.folder(), error)) return {labIsMissing()};
        return {staticFile(lab_.folder(), head.path().substr(5), head)};
    }
    const auto name = head.path().substr(api.size());
    if (name == "exchanges") return events(lab_.exchanges(), head);
    if (name == "simulate" || name == "call") {
        if (head.method != "POST") return {methodNotAllowed("POST")};
        if (name == "call") return {callOfLab()};
        return {on(labPool_, [this](const HttpRequest& http) { return lab_.simulate(http.body); })};
    }
    const auto isState = name == "state";
    if (!isState && name != "recording") return {notFound()};
    if (head.method != "GET" && head.method != "HEAD") return {methodNotAllowed("GET, HEAD")};
    const auto answer = [this, isState](const HttpRequest& http) {
        return isState ? lab_.state() : lab_.recording(http.query() == "redact");
    };
    return {on(labPool_, answer, isState ? "" : "recording")};
}

Whole Site::callOfLab() {
    return [this](HttpRequest request, const Reply& reply) {
        const auto answer = [this](const HttpRequest& http) { return lab_.call(http.body); };
        on(pool_, answer, monitorOf(request.body))(std::move(request), reply);
    };
}

Whole Site::on(WorkPool& pool, std::function<HttpResponse(const HttpRequest&)> answer, std::string queue) {
    return [&pool, answer = std::move(answer), queue = std::move(queue)](HttpRequest request, Reply reply) {
        auto work = [answer, reply, request = std::move(request)]() mutable {
            try {
                reply(answer(request));
            } catch (const std::exception& error) {
                reply(errorResponse(500, "HostError", error.what()));
            }
        };
        if (!pool.add(queue, std::move(work)))
            reply(errorResponse(503, "ServiceUnavailable", "Too many requests wait already."));
    };
}

HttpResponse Site::ask(const Request& request, const std::string& source) {
    if (request.body.find('\0') != std::string::npos)  // where the plug-in's texts end
        return errorResponse(400, "BadRequest", "The body has a NUL.");
    try {
        return responseOf(journal_.call(source, request.resource, request.texts()));
    } catch (const std::invalid_argument& error) {  // a plug-in that is older than this program
        return errorResponse(404, "NotFound", error.what());
    }
}

}  // namespace host::server
