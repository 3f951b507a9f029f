// A request that goes on to the development server, with all that follows on its connection, such as a WebSocket.
#pragma once

#include <array>
#include <boost/asio/steady_timer.hpp>
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

/// Carries bytes both ways until both sides have ended, or have been silent for long. Both are asked to close the
/// connection after the answer, so that the next request of the client comes to be judged by itself. Who may read the
/// answer is not for the development server to say.
class Tunnel : public std::enable_shared_from_this<Tunnel> {
 public:
    /// `fields` are further lines of the answer's head.
    Tunnel(beast::tcp_stream client, const Upstream& upstream, Clients& clients, std::string fields);

    /// The head is that of the client's request; the rest is what it has sent behind it.
    void start(const std::string& head, const std::string& rest);

 private:
    struct Direction {
        beast::tcp_stream& from;
        beast::tcp_stream& to;
        std::array<char, 16 * 1024> bytes{};
    };

    void fail();
    void readHead();
    void takeHead(std::size_t size);
    void stir();
    void carry(Direction& direction);
    void close();

    beast::tcp_stream client_;
    beast::tcp_stream server_;
    const Upstream& upstream_;
    const Counted counted_;
    Idleness idleness_;
    const std::string fields_;
    asio::steady_timer silence_;
    bool hasUpgraded_ = false;  ///< to something that may be silent for as long as it likes, such as a WebSocket
    std::string text_;          ///< to the server
    std::string answer_;        ///< what came from the server, until its head is over
    Direction toServer_{client_, server_};
    Direction toClient_{server_, client_};
};

}  // namespace host::server
