// The server's sockets and its life.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/Console.h"
#include "host/server/Site.h"

namespace host::server {

struct ServerOptions {
    std::uint16_t port = 0;  ///< 0: one that is free
    std::string proxy{};     ///< the address of a development server; empty: none
};

/// Listens on this machine's own addresses, 127.0.0.1 and, where there is one, [::1].
class Server {
 public:
    /// Throws std::runtime_error when the port is taken, std::invalid_argument for a proxy that is none.
    Server(const ServerOptions& options, Site& site, const Journal& journal, const Console& console);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::uint16_t port() const;

    /// Readers of the log are told of new events.
    void follow(EventLog& log);

    /// Serves until the program is interrupted (Ctrl+C) and the requests that run then have ended; a second
    /// interruption ends the program.
    void run();

 private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace host::server
