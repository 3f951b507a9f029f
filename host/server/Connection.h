// One connection of a client: its requests, one after the other.
#pragma once

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <optional>

#include "host/server/Http.h"
#include "host/server/Network.h"

namespace host::server {

/// What connections share. It outlives them.
class Clients {
 public:
    virtual ~Clients() = default;

    virtual Route route(const HttpRequest& head) = 0;

    /// Takes over the connection to be sent the events of a log.
    virtual void stream(beast::tcp_stream stream, const Events& events, const std::string& fields) = 0;

    /// Takes over the connection to be passed on with these bytes in front, of which the first so many are the head.
    virtual void forward(beast::tcp_stream stream, std::string head, std::string rest) = 0;

    std::size_t count = 0;        ///< of connections of any kind
    std::size_t largeBodies = 0;  ///< that are being read or worked at
};

/// Counts something while it lives.
class Counted {
 public:
    explicit Counted(std::size_t& count) : count_(count) { ++count_; }
    ~Counted() { --count_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

 private:
    std::size_t& count_;
};

/// Lives until its last operation has ended. All of it runs on the network's thread.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
    Connection(tcp::socket socket, Clients& clients);

    void start() { readHead(); }

 private:
    using Parser = beast::http::request_parser<beast::http::string_body>;

    void readHead();
    void takeHead(Error error);
    void takeWhole(Whole answer);
    void readBody();
    void answerWhole();
    void respond(HttpResponse response);
    void refuse(Error error);
    void closeGently();
    void discardRest();

    beast::tcp_stream stream_;
    beast::flat_buffer buffer_;
    Clients& clients_;
    const Counted counted_;
    std::optional<Counted> largeBody_;

    // Of the request that is worked at.
    std::optional<Parser> parser_;
    HttpRequest request_;
    Whole whole_;
    std::vector<std::pair<std::string, std::string>> fields_;
    beast::http::response<beast::http::string_body> response_;
    std::size_t discarded_ = 0;
};

}  // namespace host::server
