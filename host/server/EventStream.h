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

    /// There may be something new. A reader that is sent what the log has long forgotten is dropped, so that readers
    /// together hold no more than the log; it may come back.
    void wake();

    void close();

 private:
    template <typename Step>
    void take(Step step);

    void send(std::string text);
    void send(const std::vector<asio::const_buffer>& buffers);
    void sendNext();
    void waitForEnd();

    beast::tcp_stream stream_;
    asio::steady_timer timer_;
    const EventLog& log_;
    std::uint64_t next_;
    const Counted counted_;

    // What is being sent.
    std::string text_;
    EventLog::Events events_;
    bool isSending_ = false;

    char unread_[64]{};
};

}  // namespace host::server
