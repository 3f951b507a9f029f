#include "host/server/Connection.h"

#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <sstream>

namespace host::server {

namespace http = beast::http;

namespace {

/// What may wait in memory unread, for each connection.
constexpr std::size_t bufferSize = 2 * limits::head;

/// How much of a refused body is read so that its sender comes to read the refusal.
constexpr std::size_t maximumDiscarded = 64u << 20;

std::string text(const http::fields& fields, std::string_view name) {
    const auto value = fields[beast::string_view(name.data(), name.size())];
    return {value.data(), value.size()};
}

/// A browser sends one of each of these; several are no browser's.
bool isRepeated(const http::fields& fields, http::field name) {
    return fields.count(name) > 1;
}

/// The only one that is needed; behind any other, it is unknown where the request ends.
bool hasKnownEncoding(const http::request_header<>& head) {
    const auto count = head.count(http::field::transfer_encoding);
    const auto isChunked = beast::iequals(head[http::field::transfer_encoding], "chunked");
    return count == 0 || (count == 1 && isChunked && head.version() == 11);
}

/// The target may be a whole address, which then holds in place of the Host.
void takeAddress(HttpRequest& request) {
    constexpr std::string_view scheme = "http://";
    const auto begins = beast::string_view(request.target).substr(0, scheme.size());
    if (!beast::iequals(begins, beast::string_view(scheme.data(), scheme.size()))) return;
    const auto address = request.target.substr(scheme.size());
    const auto end = std::min(address.find_first_of("/?"), address.size());
    request.host = address.substr(0, end);
    request.target = (address.substr(end, 1) == "/" ? "" : "/") + address.substr(end);
}

HttpRequest headOf(const http::request_header<>& head) {
    return {.method = std::string(head.method_string()),
            .target = std::string(head.target()),
            .body = {},
            .host = text(head, "Host"),
            .origin = text(head, "Origin"),
            .fetchSite = text(head, "Sec-Fetch-Site"),
            .requestedMethod = text(head, "Access-Control-Request-Method"),
            .requestedPrivateNetwork = text(head, "Access-Control-Request-Private-Network"),
            .lastEventId = text(head, "Last-Event-ID"),
            .referer = text(head, "Referer")};
}

std::size_t fieldCount(const http::fields& fields) {
    return static_cast<std::size_t>(std::distance(fields.begin(), fields.end()));
}

/// The head as it came, but for the connection's own fields.
std::string formatHead(const http::request_header<>& head) {
    std::ostringstream text;
    text << head;
    return text.str();
}

/// Beast has no type of file that would suit; a response's fields are set one by one.
std::string formatFields(const std::vector<std::pair<std::string, std::string>>& fields) {
    std::string text;
    for (const auto& [name, value] : fields) text += name + ": " + value + "\r\n";
    return text;
}

}  // namespace

void Idleness::begin() {
    end();
    place_ = list_.insert(list_.end(), this);
}

void Idleness::end() {
    if (place_) list_.erase(*place_);
    place_.reset();
}

bool Idleness::makeRoom(List& list) {
    if (list.empty()) return false;
    auto& longest = *list.front();
    longest.end();
    longest.close_();
    return true;
}

Connection::Connection(tcp::socket socket, Clients& clients)
    : stream_(std::move(socket)), buffer_(bufferSize), clients_(clients), counted_(clients.count) {}

void Connection::readHead() {
    parser_.emplace();
    parser_->header_limit(limits::head);
    parser_->body_limit(limits::body);
    isLast_ = false;
    idleness_.begin();
    stream_.expires_after(patience::forHead);
    http::async_read_header(stream_, buffer_, *parser_,
                            [self = shared_from_this()](Error error, std::size_t) { self->takeHead(error); });
}

void Connection::takeHead(Error error) {
    if (error) return refuse(error);
    auto& head = parser_->get();
    if (fieldCount(head) > limits::fields)
        return respond(errorResponse(431, "HeaderTooLarge", "The request has too many header fields."));
    for (const auto name : {http::field::host, http::field::origin, http::field::sec_fetch_site})
        if (isRepeated(head, name)) return respond(errorResponse(400, "BadRequest", "A header field is repeated."));
    if (!hasKnownEncoding(head)) {
        isLast_ = true;
        return respond(errorResponse(501, "NotImplemented", "A body comes as it is, or in chunks."));
    }
    if (head.version() == 11 && head.count(http::field::host) == 0)
        return respond(errorResponse(400, "BadRequest", "The request has no Host."));
    request_ = headOf(head);
    takeAddress(request_);
    auto route = clients_.route(request_);
    fields_ = std::move(route.fields);
    if (auto* const response = std::get_if<AtOnce>(&route.what)) return respond(std::move(*response));
    if (auto* const answer = std::get_if<Whole>(&route.what)) return takeWhole(std::move(*answer));
    if (const auto* const events = std::get_if<Events>(&route.what))
        return clients_.stream(std::move(stream_), *events, formatFields(fields_));
    const std::string rest(static_cast<const char*>(buffer_.data().data()), buffer_.size());
    head.target(request_.target);
    clients_.forward(std::move(stream_), formatHead(head), rest, formatFields(fields_));
}

void Connection::takeWhole(Whole answer) {
    const auto length = parser_->content_length();
    if (length && *length > limits::body) return refuse(http::error::body_limit);
    if (length && *length > limits::smallBody && !mayBeLarge()) return;
    whole_ = std::move(answer);
    if (parser_->is_done()) return answerWhole();
    idleness_.begin();
    stream_.expires_after(patience::forBody);
    if (!beast::iequals(parser_->get()[http::field::expect], "100-continue")) return readBody();
    static const std::string goOn = "HTTP/1.1 100 Continue\r\n\r\n";
    asio::async_write(stream_, asio::buffer(goOn), [self = shared_from_this()](Error error, std::size_t) {
        if (!error) self->readBody();
    });
}

void Connection::readBody() {
    http::async_read_some(stream_, buffer_, *parser_, [self = shared_from_this()](Error error, std::size_t) {
        if (error) return self->refuse(error);
        self->takePart();
    });
}

void Connection::takePart() {
    if (parser_->get().body().size() > limits::smallBody && !mayBeLarge()) return;
    if (parser_->is_done()) return answerWhole();
    readBody();
}

/// Answers the request itself, if not.
bool Connection::mayBeLarge() {
    if (!largeBody_ && clients_.largeBodies >= limits::largeBodies) {
        respond(errorResponse(503, "ServiceUnavailable", "Too many large bodies are on their way."));
        return false;
    }
    if (!largeBody_) largeBody_.emplace(clients_.largeBodies);
    return true;
}

void Connection::answerWhole() {
    idleness_.end();
    stream_.expires_never();
    request_.body = std::move(parser_->get().body());
    const auto executor = stream_.get_executor();
    // The answer takes this object with it, so that it ends on the network's thread.
    const auto reply = [self = shared_from_this(), executor](HttpResponse response) mutable {
        asio::post(executor, [self = std::move(self), response = std::move(response)]() mutable {
            self->respond(std::move(response));
        });
    };
    std::exchange(whole_, {})(std::move(request_), reply);
}

void Connection::refuse(Error error) {
    if (error == http::error::body_limit)
        return respond(errorResponse(413, "BodyTooLarge", "A body has at most 8 MiB."));
    if (error == http::error::header_limit || error == http::error::buffer_overflow)
        return respond(errorResponse(431, "HeaderTooLarge", "The head of a request has at most 16 KiB."));
    if (error.category() == make_error_code(http::error::bad_method).category() &&
        error != http::error::end_of_stream && error != http::error::partial_message)
        return respond(errorResponse(400, "BadRequest", "This is not HTTP/1.1: " + error.message() + "."));
    // The client has gone, or took too long.
    stream_.close();
}

void Connection::respond(HttpResponse response) {
    const auto keepsAlive = !isLast_ && !response.endsConnection && parser_->is_done() && parser_->get().keep_alive();
    const auto isHead = parser_->get().method() == http::verb::head;
    if (clients_.answers + response.body.size() > limits::answers)
        response = errorResponse(503, "ServiceUnavailable", "Too many large answers are on their way.");
    answer_.emplace(clients_.answers, response.body.size());
    response_ = {};
    response_.version(11);
    response_.result(response.status);
    for (const auto* fields : {&response.fields, &fields_})
        for (const auto& [name, value] : *fields) response_.insert(name, value);
    if (!response.type.empty()) response_.set(http::field::content_type, response.type);
    response_.set(http::field::cache_control, "no-store");
    response_.set("X-Content-Type-Options", "nosniff");
    response_.keep_alive(keepsAlive);
    response_.body() = std::move(response.body);
    if (response.status != 204 && !(isHead && response_.body().empty()))
        response_.content_length(response_.body().size());
    if (isHead) response_.body().clear();
    fields_.clear();
    idleness_.begin();
    stream_.expires_after(patience::forReading);
    http::async_write(stream_, response_, [self = shared_from_this(), keepsAlive](Error error, std::size_t) {
        self->response_ = {};
        self->answer_.reset();
        self->largeBody_.reset();
        if (error) return self->stream_.close();
        if (keepsAlive) return self->readHead();
        self->closeGently();
    });
}

/// A connection that is closed with bytes unread is reset, and the client may lose the answer.
void Connection::closeGently() {
    Error ignored;
    stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
    stream_.expires_after(patience::forEnd);
    discardRest();
}

void Connection::discardRest() {
    buffer_.clear();
    stream_.async_read_some(buffer_.prepare(bufferSize), [self = shared_from_this()](Error error, std::size_t size) {
        self->discarded_ += size;
        if (error || self->discarded_ > maximumDiscarded) return self->stream_.close();
        self->discardRest();
    });
}

}  // namespace host::server
