// Who may talk to the server: this machine's user, never a page of somebody else's that happens to be open.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/server/Http.h"

namespace host::server {

class Guard {
 public:
    /// `origins` are those of other pages that may use the server, such as "http://localhost:5173".
    Guard(std::uint16_t port, std::vector<std::string> origins);

    /// Whether a browser could call the origin of a page so: a scheme, a host and, unless it is the scheme's own, a
    /// port.
    static bool isOrigin(const std::string& text);

    /// The refusal of a request that does not come from this server's own pages, the named ones, or a program:
    ///   - its Host is not this address, as when a foreign name resolves to this machine;
    ///   - its Origin is another page's. "null" is: any page can hide behind it;
    ///   - it has no Origin, and its Sec-Fetch-Site is another one than "same-origin" or "none". For "same-site", it
    ///     takes no more than a server at another port of this machine.
    std::optional<HttpResponse> refusal(const HttpRequest& request) const;

    /// The answer to a named origin's question of whether it may send the request that it has in mind.
    std::optional<HttpResponse> preflight(const HttpRequest& request) const;

    /// The header fields that let a named origin read the answer.
    std::vector<std::pair<std::string, std::string>> corsFields(const HttpRequest& request) const;

 private:
    bool isNamed(const std::string& origin) const;

    std::vector<std::string> hosts_;
    std::vector<std::string> origins_;
};

}  // namespace host::server
