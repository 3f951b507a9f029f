#include "host/server/EventStream.h"

#include <boost/asio/write.hpp>
#include <tuple>

namespace host::server {

EventStream::EventStream(beast::tcp_stream stream, const Events& events, Clients& clients)
    : stream_(std::move(stream)),
      timer_(stream_.get_executor()),
      log_(events.log),
      next_(events.first),
      counted_(clients.count) {}

/// A step that fails, such as for want of memory, closes the connection: as long as it is open, its reader waits, and
/// does not come back.
template <typename Step>
void EventStream::take(Step step) try {
    step();
} catch (...) {
    close();
    throw;
}

void EventStream::start(const std::string& fields) {
    take([&] {
        stream_.expires_never();
        waitForEnd();
        send(
            "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nCache-Control: no-store\r\nConnection: close\r\n"
            "X-Content-Type-Options: nosniff\r\n" +
            fields + "\r\n: the events follow\n\n");
    });
}

void EventStream::send(std::string text) {
    text_ = std::move(text);
    send({asio::buffer(text_)});
}

void EventStream::send(const std::vector<asio::const_buffer>& buffers) {
    isSending_ = true;
    stream_.expires_after(patience::forReading);
    asio::async_write(stream_, buffers, [self = shared_from_this()](Error error, std::size_t) {
        self->isSending_ = false;
        if (error) return self->close();
        self->take([&] { self->sendNext(); });
    });
}

void EventStream::sendNext() {
    std::tie(events_, next_) = log_.read(next_);
    if (!events_.empty()) {
        std::vector<asio::const_buffer> buffers;
        for (const auto& event : events_) buffers.push_back(asio::buffer(event->text));
        return send(buffers);
    }
    stream_.expires_never();
    timer_.expires_after(patience::ofStreams);
    timer_.async_wait([self = shared_from_this()](Error error) {
        if (!self->stream_.socket().is_open()) return;
        const auto woken = error == asio::error::operation_aborted;
        self->take([&] {
            if (woken)
                self->sendNext();
            else
                self->send(": still here\n\n");
        });
    });
}

void EventStream::wake() {
    if (isSending_ && next_ < log_.first()) return close();
    timer_.cancel();
}

/// Nothing is to come from the client but the end.
void EventStream::waitForEnd() {
    stream_.socket().async_read_some(asio::buffer(unread_), [self = shared_from_this()](Error error, std::size_t) {
        if (error) return self->close();
        self->take([&] { self->waitForEnd(); });
    });
}

void EventStream::close() {
    stream_.close();
    timer_.cancel();
}

}  // namespace host::server
