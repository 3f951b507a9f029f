// What the parts of the server say to each other about a request and its answer. Nothing here knows how they travel.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace host::server {

class EventLog;

struct HttpRequest {
    std::string method;
    std::string target;  ///< the path, and the query behind a question mark
    std::string body;

    // Header fields; empty when absent.
    std::string host;
    std::string origin;
    std::string fetchSite;
    std::string requestedMethod;          ///< of a preflight
    std::string requestedPrivateNetwork;  ///< of a preflight
    std::string lastEventId;
    std::string referer;

    std::string_view path() const { return std::string_view(target).substr(0, target.find('?')); }
    std::string_view query() const {
        const auto mark = target.find('?');
        return mark == std::string::npos ? std::string_view() : std::string_view(target).substr(mark + 1);
    }
};

struct HttpResponse {
    unsigned status = 200;
    std::string type{};  ///< empty: there is no body
    std::string body{};
    std::vector<std::pair<std::string, std::string>> fields{};
    bool endsConnection = false;
};

/// The envelope of the plug-in around an error of the server's own.
HttpResponse errorResponse(unsigned status, std::string_view name, std::string_view message);

/// Takes the answer of a request, once, on any thread.
using Reply = std::function<void(HttpResponse)>;

/// The request is answered by its head alone.
using AtOnce = HttpResponse;

/// The request is read to its end first, and then answered by this function.
using Whole = std::function<void(HttpRequest request, Reply reply)>;

/// The answer is a stream of the log's events, from this one on.
struct Events {
    EventLog& log;
    std::uint64_t first;
};

/// The request goes on to the development server as it is.
struct Forward {};

/// What becomes of a request, decided when its head is there.
struct Route {
    std::variant<AtOnce, Whole, Events, Forward> what;
    std::vector<std::pair<std::string, std::string>> fields{};  ///< that the answer has, whatever it is
};

}  // namespace host::server
