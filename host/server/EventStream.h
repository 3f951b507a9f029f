// A connection that is sent the events of a log, as they come.
#pragma once

#include <boost/asio/steady_timer.hpp>
#include <string>

#include "host/server/Connection.h"
#include "host/server/EventLog.h"

namespace host::server {

/// It has no queue: it reads the log at its own pace, and one that does not read at all is dropped.
class EventStream : public std::enable_shared_from_this<EventStream> {
 public:
    EventStream(beast::tcp_stream stream, const Events& events, Clients& clients);

    /// `fields` are further lines of the answer's head.
    void start(const std::string& fields);

    /// There may be something new.
    void wake() { timer_.cancel(); }

    void close();

 private:
    void send(std::string text);
    void sendNext();
    void waitForEnd();

    beast::tcp_stream stream_;
    asio::steady_timer timer_;
    const EventLog& log_;
    std::uint64_t next_;
    const Counted counted_;
    std::string text_;
    char unread_[64]{};
};

}  // namespace host::server
