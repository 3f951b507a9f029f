// A request that goes on to the development server, with all that follows on its connection, such as a WebSocket.
#pragma once

#include <array>
#include <string>

#include "host/server/Connection.h"

namespace host::server {

/// A development server on this machine.
struct Upstream {
    tcp::resolver::results_type endpoints;
    std::string host;  ///< with its port, as in its own address
};

/// Throws std::invalid_argument unless the URL is one of http: on this machine.
Upstream findUpstream(asio::io_context& context, const std::string& url);

/// Carries bytes both ways until both sides have ended. The development server is asked to close the connection after
/// the answer, so that the next request of the client comes to be judged by itself.
class Tunnel : public std::enable_shared_from_this<Tunnel> {
 public:
    Tunnel(beast::tcp_stream client, const Upstream& upstream, Clients& clients);

    /// The head is that of the client's request; the rest is what it has sent behind it.
    void start(const std::string& head, const std::string& rest);

 private:
    struct Direction {
        beast::tcp_stream& from;
        beast::tcp_stream& to;
        std::array<char, 16 * 1024> bytes{};
    };

    void fail();
    void carry(Direction& direction);
    void close();

    beast::tcp_stream client_;
    beast::tcp_stream server_;
    const Upstream& upstream_;
    const Counted counted_;
    std::string text_;
    Direction toServer_{client_, server_};
    Direction toClient_{server_, client_};
};

}  // namespace host::server
