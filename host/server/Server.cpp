#include "host/server/Server.h"

#include <algorithm>
#include <atomic>
#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstdlib>
#include <map>
#include <ostream>
#include <stdexcept>

#include "host/server/Connection.h"
#include "host/server/EventStream.h"
#include "host/server/Tunnel.h"

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace host::server {

namespace {

/// How often the end of what still runs is looked for.
constexpr auto pollTime = std::chrono::milliseconds(20);

/// After connections could not be accepted so many times in a row, for want of file descriptors. Once or a few times, a
/// client was gone before, which is no reason to let others wait.
constexpr auto recoveryTime = std::chrono::milliseconds(100);
constexpr std::size_t maximumFailures = 100;

#ifdef _WIN32
/// Windows lets programs share a port unless it is taken for oneself.
using ExclusiveAddress = asio::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE>;
void prepare(tcp::acceptor& acceptor) {
    acceptor.set_option(ExclusiveAddress(true));
}
void allowManyConnections() {}
#else
/// The port is free at once when the server before has ended.
void prepare(tcp::acceptor& acceptor) {
    acceptor.set_option(tcp::acceptor::reuse_address(true));
}

void allowManyConnections() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    const rlim_t wanted = limits::connections + 256;
    if (limit.rlim_cur >= wanted) return;
    limit.rlim_cur = std::min(wanted, limit.rlim_max);
    setrlimit(RLIMIT_NOFILE, &limit);
}
#endif

bool isUnknownFamily(Error error) {
    return error == asio::error::address_family_not_supported || error == asio::error::bad_descriptor ||
           error == asio::error::make_error_code(asio::error::invalid_argument) ||
           error == boost::system::errc::address_not_available;
}

}  // namespace

class Server::Implementation : public Clients {
 public:
    Implementation(const ServerOptions& options, Site& site, const Journal& journal, const Console& console)
        : site_(site), journal_(journal), console_(console), signals_(context_, SIGINT, SIGTERM) {
        allowManyConnections();
        if (!options.proxy.empty()) upstream_ = findUpstream(context_, options.proxy);
        listen(options.port);
        if (upstream_ && upstream_->endpoints.begin()->endpoint().port() == port())
            throw std::invalid_argument("--proxy takes a development server on this machine, not this server itself");
    }

    std::uint16_t port() const { return acceptors_.front().local_endpoint().port(); }

    void follow(EventLog& log) {
        log.onEvent([this] {
            if (wakes_.exchange(true)) return;
            try {
                asio::post(context_, [this] { wakeStreams(); });
            } catch (...) {  // for want of memory: the next event wakes them
                wakes_ = false;
            }
        });
    }

    void run() {
        for (auto& acceptor : acceptors_) accept(acceptor);
        waitForInterruption();
        while (!context_.stopped()) serve();
        site_.finish();  // whose threads answer to this context
    }

    Route route(const HttpRequest& head) override {
        auto route = site_.route(head);
        std::erase_if(streams_, [](const auto& other) { return other.expired(); });
        if (std::holds_alternative<Events>(route.what) && streams_.size() >= limits::streams)
            route.what = errorResponse(503, "ServiceUnavailable", "Too many streams of events are open.");
        return route;
    }

    void stream(beast::tcp_stream connection, const Events& events, const std::string& fields) override {
        const auto stream = std::make_shared<EventStream>(std::move(connection), events, *this);
        streams_.push_back(stream);
        stream->start(fields);
    }

    void forward(beast::tcp_stream connection, const std::string& head, const std::string& rest,
                 const std::string& fields) override {
        std::make_shared<Tunnel>(std::move(connection), *upstream_, *this, fields)->start(head, rest);
    }

 private:
    /// Until all has ended, or something fails, such as for want of memory: its connection ends with what was under
    /// way, and the others go on.
    void serve() try { context_.run(); } catch (const std::exception& error) {
        console_.error << "A connection was dropped: " << error.what() << std::endl;
    }

    void listen(std::uint16_t port) {
        // A free port of one family may be taken in the other.
        constexpr int attempts = 20;
        for (int attempt = 1;; ++attempt) {
            acceptors_.clear();
            Error error = listen(tcp::endpoint(asio::ip::address_v4::loopback(), port));
            if (!error) {
                error = listen(tcp::endpoint(asio::ip::address_v6::loopback(), this->port()));
                if (!error || isUnknownFamily(error)) return;
            }
            if (port != 0 || attempt == attempts)
                throw std::runtime_error("cannot listen on port " + std::to_string(port) + ": " + error.message() +
                                         "; --port 0 takes one that is free");
        }
    }

    Error listen(const tcp::endpoint& endpoint) {
        Error error;
        tcp::acceptor acceptor(context_);
        acceptor.open(endpoint.protocol(), error);
        if (error) return error;
        prepare(acceptor);
        if (endpoint.protocol() == tcp::v6()) acceptor.set_option(asio::ip::v6_only(true), error);
        acceptor.bind(endpoint, error);
        if (!error) acceptor.listen(asio::socket_base::max_listen_connections, error);
        if (!error) acceptors_.push_back(std::move(acceptor));
        return error;
    }

    void accept(tcp::acceptor& acceptor) {
        acceptor.async_accept([this, &acceptor](Error error, tcp::socket socket) {
            if (!acceptor.is_open()) return;
            if (error) return ++failures_ % maximumFailures == 0 ? acceptLater(acceptor) : accept(acceptor);
            failures_ = 0;
            accept(acceptor);  // whatever becomes of this one
            if (count < limits::connections || Idleness::makeRoom(idle)) {
                socket.set_option(tcp::no_delay(true), error);
                std::make_shared<Connection>(std::move(socket), *this)->start();
            }
        });
    }

    void acceptLater(tcp::acceptor& acceptor) {
        const auto timer = std::make_shared<asio::steady_timer>(context_, recoveryTime);
        timer->async_wait([this, &acceptor, timer](Error) {
            if (acceptor.is_open()) accept(acceptor);
        });
    }

    void wakeStreams() {
        wakes_ = false;
        for (const auto& weak : streams_)
            if (const auto stream = weak.lock()) stream->wake();
    }

    void waitForInterruption() {
        signals_.async_wait([this](Error error, int) {
            if (error) return;
            if (isEnding_) std::_Exit(EXIT_FAILURE);  // what runs is left to itself
            isEnding_ = true;
            for (auto& acceptor : acceptors_) acceptor.close();
            if (const auto dropped = site_.close())
                console_.error << "Waiting requests that are dropped: " << dropped << std::endl;
            end();
        });
    }

    void end() {
        const auto running = journal_.running();
        if (running.empty()) return context_.stop();
        if (!hasTold_) {
            std::map<std::string, std::size_t> counts;
            for (const auto& name : running) ++counts[name];
            for (const auto& [name, number] : counts) {
                console_.error << "Waiting for the end of " << name;
                if (number > 1) console_.error << " (" << number << " times)";
                console_.error << '\n';
            }
            console_.error << "Ctrl+C again leaves at once." << std::endl;
            hasTold_ = true;
            waitForInterruption();
        }
        poll_.expires_after(pollTime);
        poll_.async_wait([this](Error) { end(); });
    }

    Site& site_;
    const Journal& journal_;
    const Console& console_;
    asio::io_context context_{1};
    asio::signal_set signals_;
    asio::steady_timer poll_{context_};
    std::vector<tcp::acceptor> acceptors_;
    std::optional<Upstream> upstream_;
    std::vector<std::weak_ptr<EventStream>> streams_;
    std::atomic<bool> wakes_{false};
    std::size_t failures_ = 0;  ///< to accept a connection, in a row
    bool isEnding_ = false;
    bool hasTold_ = false;
};

Server::Server(const ServerOptions& options, Site& site, const Journal& journal, const Console& console)
    : implementation_(std::make_unique<Implementation>(options, site, journal, console)) {}

Server::~Server() = default;

std::uint16_t Server::port() const {
    return implementation_->port();
}

void Server::follow(EventLog& log) {
    implementation_->follow(log);
}

void Server::run() {
    implementation_->run();
}

}  // namespace host::server
