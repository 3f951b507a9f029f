#include "host/server/Tunnel.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/string.hpp>
#include <stdexcept>

namespace host::server {

namespace {

constexpr auto patienceForServer = std::chrono::seconds(10);
constexpr std::size_t maximumAnswerHead = 64 * 1024;

/// The lines of the head with the development server's own name and, unless the connection becomes something else, the
/// wish that it be closed.
std::string rewriteHead(const std::string& head, const std::string& host) {
    std::string rewritten;
    std::string fields;
    bool upgrades = false;
    for (std::size_t at = 0; at < head.size();) {
        const auto end = head.find("\r\n", at);
        const std::string_view line(head.data() + at, end - at);
        at = end + 2;
        if (rewritten.empty()) {
            rewritten = std::string(line) + "\r\nHost: " + host + "\r\n";
            continue;
        }
        const auto colon = std::min(line.find(':'), line.size());
        const beast::string_view name(line.data(), colon);
        if (line.empty() || beast::iequals(name, "Host") || beast::iequals(name, "Connection") ||
            beast::iequals(name, "Keep-Alive") || beast::iequals(name, "Proxy-Connection"))
            continue;
        upgrades = upgrades || beast::iequals(name, "Upgrade");
        // A development server judges by its own address, as this one does.
        if (beast::iequals(name, "Origin"))
            fields += "Origin: http://" + host + "\r\n";
        else
            fields += std::string(line) + "\r\n";
    }
    return rewritten + fields + (upgrades ? "Connection: Upgrade\r\n\r\n" : "Connection: close\r\n\r\n");
}

bool isInterim(const std::string& head) {
    return head.size() > 9 && head[9] == '1' && head.compare(9, 3, "101") != 0;
}

/// The lines of the answer's head, the given ones among them.
std::string rewriteAnswerHead(const std::string& head, const std::string& fields, bool hasUpgraded) {
    std::string rewritten;
    for (std::size_t at = 0; at < head.size();) {
        const auto end = head.find("\r\n", at);
        const std::string_view line(head.data() + at, end - at);
        at = end + 2;
        const beast::string_view name(line.data(), std::min(line.find(':'), line.size()));
        constexpr beast::string_view cors = "Access-Control-";
        const auto isOfConnection = beast::iequals(name, "Connection") || beast::iequals(name, "Keep-Alive");
        if (line.empty() || beast::iequals(name.substr(0, cors.size()), cors) || (isOfConnection && !hasUpgraded))
            continue;
        rewritten.append(line).append("\r\n");
    }
    if (isInterim(head)) return rewritten + "\r\n";
    return rewritten + fields + (hasUpgraded ? "\r\n" : "Connection: close\r\n\r\n");
}

const std::string unreachable =
    "HTTP/1.1 502 Bad Gateway\r\nContent-Type: text/plain\r\nConnection: close\r\n\r\n"
    "The development server does not answer.\n";

}  // namespace

Upstream findUpstream(asio::io_context& context, const std::string& url) {
    constexpr std::string_view scheme = "http://";
    const std::invalid_argument refusal(
        "--proxy takes the address of a development server on this machine, such as "
        "http://localhost:5173, not " +
        url);
    if (!url.starts_with(scheme)) throw refusal;
    auto host = url.substr(scheme.size());
    if (host.ends_with('/')) host.pop_back();
    const auto colon = host.rfind(':');
    const auto bracket = host.rfind(']');
    const auto hasPort = colon != std::string::npos && (bracket == std::string::npos || colon > bracket);
    auto name = host.substr(0, hasPort ? colon : host.size());
    const auto port = hasPort ? host.substr(colon + 1) : "80";
    if (name != "localhost" && name != "127.0.0.1" && name != "[::1]") throw refusal;
    if (port.empty() || port.size() > 5 || port.find_first_not_of("0123456789") != std::string::npos) throw refusal;
    if (std::stoul(port) == 0 || std::stoul(port) > 65535) throw refusal;
    if (name == "[::1]") name = "::1";
    Error error;
    Upstream upstream{tcp::resolver(context).resolve(name, port, error), host};
    if (error || upstream.endpoints.empty()) throw refusal;
    return upstream;
}

Tunnel::Tunnel(beast::tcp_stream client, const Upstream& upstream, Clients& clients, std::string fields)
    : client_(std::move(client)),
      server_(client_.get_executor()),
      upstream_(upstream),
      counted_(clients.count),
      idleness_(clients.idle, [this] { close(); }),
      fields_(std::move(fields)),
      silence_(client_.get_executor()) {}

void Tunnel::start(const std::string& head, const std::string& rest) {
    text_ = rewriteHead(head, upstream_.host) + rest;
    client_.expires_never();
    server_.expires_after(patienceForServer);
    server_.async_connect(upstream_.endpoints, [self = shared_from_this()](Error error, const tcp::endpoint&) {
        if (error) return self->fail();
        self->server_.expires_never();
        asio::async_write(self->server_, asio::buffer(self->text_), [self](Error failed, std::size_t) {
            self->text_ = {};
            if (failed) return self->close();
            self->carry(self->toServer_);
            self->readHead();
        });
    });
}

void Tunnel::readHead() {
    asio::async_read_until(server_, asio::dynamic_buffer(answer_, maximumAnswerHead), "\r\n\r\n",
                           [self = shared_from_this()](Error error, std::size_t size) {
                               if (!error && self->answer_.starts_with("HTTP/1.")) return self->takeHead(size);
                               if (self->client_.socket().is_open()) self->fail();
                           });
}

void Tunnel::takeHead(std::size_t size) {
    const auto head = answer_.substr(0, size);
    const auto isLast = !isInterim(head);
    hasUpgraded_ = head.compare(9, 3, "101") == 0;
    stir();
    text_ = rewriteAnswerHead(head, fields_, hasUpgraded_);
    answer_.erase(0, size);
    if (isLast) text_ += std::exchange(answer_, {});
    asio::async_write(client_, asio::buffer(text_), [self = shared_from_this(), isLast](Error error, std::size_t) {
        if (error) return self->close();
        if (!isLast) return self->readHead();
        self->text_ = {};
        self->carry(self->toClient_);
    });
}

/// Something moves.
void Tunnel::stir() {
    idleness_.begin();
    silence_.cancel();
    if (hasUpgraded_) return;
    silence_.expires_after(patience::ofTunnels);
    silence_.async_wait([weak = weak_from_this()](Error error) {
        const auto self = weak.lock();
        if (self && !error) self->close();
    });
}

void Tunnel::fail() {
    client_.expires_after(patience::forReading);
    asio::async_write(client_, asio::buffer(unreachable), [self = shared_from_this()](Error, std::size_t) {
        Error ignored;
        self->client_.socket().shutdown(tcp::socket::shutdown_send, ignored);
        self->close();
    });
}

void Tunnel::carry(Direction& direction) {
    stir();
    direction.from.async_read_some(asio::buffer(direction.bytes),
                                   [self = shared_from_this(), &direction](Error error, std::size_t size) {
                                       if (error) {
                                           Error ignored;
                                           direction.to.socket().shutdown(tcp::socket::shutdown_send, ignored);
                                           // What the development server has ended, is over; a client may have ended
                                           // and still listen.
                                           if (&direction == &self->toClient_ || error != asio::error::eof)
                                               self->close();
                                           return;
                                       }
                                       asio::async_write(direction.to, asio::buffer(direction.bytes, size),
                                                         [self, &direction](Error failed, std::size_t) {
                                                             // A development server may answer before it has read.
                                                             if (failed && &direction == &self->toClient_)
                                                                 self->close();
                                                             if (!failed) self->carry(direction);
                                                         });
                                   });
}

void Tunnel::close() {
    silence_.cancel();
    idleness_.end();
    client_.close();
    server_.close();
}

}  // namespace host::server
