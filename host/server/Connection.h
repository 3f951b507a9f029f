// One connection of a client: its requests, one after the other.
#pragma once

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <list>
#include <optional>

#include "host/server/Http.h"
#include "host/server/Network.h"

namespace host::server {

/// A connection that waits for its client, and that others may take the place of when there are too many: the one that
/// has waited the longest is closed.
class Idleness {
 public:
    using List = std::list<Idleness*>;

    Idleness(List& list, std::function<void()> close) : list_(list), close_(std::move(close)) {}
    ~Idleness() { end(); }
    Idleness(const Idleness&) = delete;
    Idleness& operator=(const Idleness&) = delete;

    void begin();
    void end();

    /// False when no connection of the list waits for its client.
    static bool makeRoom(List& list);

 private:
    List& list_;
    const std::function<void()> close_;
    std::optional<List::iterator> place_;
};

/// What connections share. It outlives them.
class Clients {
 public:
    virtual ~Clients() = default;

    virtual Route route(const HttpRequest& head) = 0;

    /// Takes over the connection to be sent the events of a log.
    virtual void stream(beast::tcp_stream stream, const Events& events, const std::string& fields) = 0;

    /// Takes over the connection to be passed on with these bytes in front.
    virtual void forward(beast::tcp_stream stream, const std::string& head, const std::string& rest,
                         const std::string& fields) = 0;

    std::size_t count = 0;        ///< of connections of any kind
    std::size_t largeBodies = 0;  ///< that are being read or worked at
    std::size_t answers = 0;      ///< bytes that are not read yet
    Idleness::List idle{};
};

/// Counts something while it lives.
class Counted {
 public:
    explicit Counted(std::size_t& count, std::size_t number = 1) : count_(count), number_(number) { count_ += number_; }
    ~Counted() { count_ -= number_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

 private:
    std::size_t& count_;
    const std::size_t number_;
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
    void takePart();
    bool mayBeLarge();
    void answerWhole();
    void respond(HttpResponse response);
    void refuse(Error error);
    void closeGently();
    void discardRest();

    beast::tcp_stream stream_;
    beast::flat_buffer buffer_;
    Clients& clients_;
    const Counted counted_;
    Idleness idleness_{clients_.idle, [this] { stream_.close(); }};
    std::optional<Counted> largeBody_;
    std::optional<Counted> answer_;

    // Of the request that is worked at.
    std::optional<Parser> parser_;
    HttpRequest request_;
    Whole whole_;
    std::vector<std::pair<std::string, std::string>> fields_;
    beast::http::response<beast::http::string_body> response_;
    bool isLast_ = false;  ///< the connection is closed behind it
    std::size_t discarded_ = 0;
};

}  // namespace host::server
