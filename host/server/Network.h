// What the files that speak to the network have in common. They are few, since these headers take long to compile.
#pragma once

#if defined(__GNUC__) && !defined(__clang__)  // GCC takes what Boost keeps in optional objects for uninitialised
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
#include <chrono>
#include <memory>

namespace host::server {

namespace asio = boost::asio;
namespace beast = boost::beast;
using asio::ip::tcp;
using Error = boost::system::error_code;

/// How long a client may take. Nobody is waited for without an end, except the plug-in.
namespace patience {
using namespace std::chrono_literals;
constexpr auto forHead = 60s;     ///< from the answer before to the end of the next head
constexpr auto forBody = 60s;     ///< for all of a body
constexpr auto forReading = 60s;  ///< to read an answer, or what a stream sends at once
constexpr auto forEnd = 2s;       ///< to close the connection once it has its last answer
constexpr auto ofStreams = 15s;   ///< after which a stream that has nothing to send shows that it lives
constexpr auto ofTunnels = 5min;  ///< of both sides together, until the development server has answered
}  // namespace patience

/// How much a client may send.
namespace limits {
constexpr std::size_t connections = 2048;
constexpr std::size_t streams = 64;  ///< of events, each of which holds what its reader has not taken yet
constexpr std::size_t head = 16 * 1024;
constexpr std::size_t fields = 100;
constexpr std::size_t body = 8u << 20;        ///< a colour table of 33 * 33 * 33 points takes 2 MB
constexpr std::size_t smallBody = 64 * 1024;  ///< up to which any number of requests may have one at once
constexpr std::size_t largeBodies = 8;        ///< how many requests may have a larger one at once
constexpr std::size_t answers = 256u << 20;   ///< of all that clients have not read yet
}  // namespace limits

}  // namespace host::server
