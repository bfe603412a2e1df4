#include "HttpServer.h"

#include <array>
#include <atomic>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <chrono>
#include <stdexcept>
#include <vector>

namespace agentsim::console {

namespace net = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = net::ip::tcp;

namespace {

constexpr size_t kMaxRequestHeader = 16 * 1024;
constexpr int kMaxConnections = 64;
// A request must arrive whole, and each write must get through, within this time.
constexpr auto kTransferTimeout = std::chrono::seconds(30);
// An idle connection kept open for the next request.
constexpr auto kIdleTimeout = std::chrono::seconds(60);
// How long a connection that is being closed still takes (and drops) what the client sends.
constexpr auto kLinger = std::chrono::seconds(2);
// An event stream with nothing to say sends a comment this often, which also finds a client
// that has gone.
constexpr auto kEventKeepAlive = std::chrono::seconds(15);

const char* const kContentSecurityPolicy =
    "default-src 'self'; img-src 'self' data: blob:; style-src 'self'; script-src 'self'; "
    "connect-src 'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'self'";

int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

std::optional<std::string> percentDecoded(std::string_view text, bool plusIsSpace) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            if (i + 2 >= text.size()) {
                return std::nullopt;
            }
            const int high = hexValue(text[i + 1]);
            const int low = hexValue(text[i + 2]);
            if (high < 0 || low < 0) {
                return std::nullopt;
            }
            decoded += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            decoded += plusIsSpace && text[i] == '+' ? ' ' : text[i];
        }
    }
    return decoded;
}

// Splits a request target into its decoded path and query; nothing when it is malformed.
bool splitTarget(std::string_view target, HttpRequest& request) {
    if (target.empty() || target.front() != '/') {
        return false;
    }
    const size_t mark = target.find('?');
    const std::optional<std::string> path = percentDecoded(target.substr(0, mark), false);
    if (!path) {
        return false;
    }
    request.path = *path;
    std::string_view query = mark == std::string_view::npos ? "" : target.substr(mark + 1);
    while (!query.empty()) {
        const size_t end = std::min(query.find('&'), query.size());
        const std::string_view pair = query.substr(0, end);
        query.remove_prefix(std::min(end + 1, query.size()));
        const size_t equals = pair.find('=');
        const auto name = percentDecoded(pair.substr(0, equals), true);
        const auto value =
            percentDecoded(equals == std::string_view::npos ? "" : pair.substr(equals + 1), true);
        if (!name || !value) {
            return false;
        }
        request.query[*name] = *value;
    }
    return true;
}

}  // namespace

struct HttpServer::Context {
    const AccessGuard* guard = nullptr;
    Router* router = nullptr;
    std::atomic<int> connections{0};
};

namespace {

class Session : public std::enable_shared_from_this<Session> {
public:
    Session(tcp::socket socket, std::shared_ptr<HttpServer::Context> context)
        : stream_(std::move(socket)),
          context_(std::move(context)),
          keepAliveTimer_(stream_.get_executor()) {
        ++context_->connections;
    }
    ~Session() { --context_->connections; }

    void start() { readHeader(); }

private:
    void readHeader() {
        parser_.emplace();
        parser_->header_limit(kMaxRequestHeader);
        parser_->body_limit(kMaxRequestBody);
        stream_.expires_after(kIdleTimeout);
        http::async_read_header(stream_, buffer_, *parser_,
                                [self = shared_from_this()](beast::error_code error, size_t) {
                                    self->onHeader(error);
                                });
    }

    void onHeader(beast::error_code error) {
        if (error) {
            refuseMalformed(error);
            return;
        }
        keepAlive_ = parser_->get().keep_alive();
        const auto length = parser_->content_length();
        if (length && *length > kMaxRequestBody) {
            sendAndClose(HttpReply::error(413, "the request body is larger than 1 MiB"));
            return;
        }
        stream_.expires_after(kTransferTimeout);
        if (beast::iequals(parser_->get()[http::field::expect], "100-continue")) {
            continue_.emplace(http::status::continue_, parser_->get().version());
            http::async_write(stream_, *continue_,
                              [self = shared_from_this()](beast::error_code failed, size_t) {
                                  if (failed) {
                                      self->close();
                                  } else {
                                      self->readBody();
                                  }
                              });
            return;
        }
        readBody();
    }

    void readBody() {
        http::async_read(stream_, buffer_, *parser_,
                         [self = shared_from_this()](beast::error_code error, size_t) {
                             if (error) {
                                 self->refuseMalformed(error);
                             } else {
                                 self->dispatch();
                             }
                         });
    }

    // A request that could not be read: answered when the fault is the request's, else dropped.
    void refuseMalformed(beast::error_code error) {
        if (error == http::error::body_limit) {
            sendAndClose(HttpReply::error(413, "the request body is larger than 1 MiB"));
        } else if (error == http::error::header_limit) {
            sendAndClose(HttpReply::error(431, "the request's header is too large"));
        } else if (error.category() == http::make_error_code(http::error::bad_target).category() &&
                   error != http::error::end_of_stream && error != http::error::partial_message) {
            sendAndClose(HttpReply::error(400, "malformed HTTP request: " + error.message()));
        } else {
            close();
        }
    }

    void dispatch() {
        const auto& message = parser_->get();
        const RequestCredentials credentials{
            message.method_string(),   message[http::field::host],   message[http::field::origin],
            message["Sec-Fetch-Site"], message[http::field::cookie], message["X-Console-Token"],
        };
        HttpRequest request;
        request.method = std::string(message.method_string());
        if (!splitTarget(message.target(), request)) {
            sendAndClose(HttpReply::error(400, "malformed request target"));
            return;
        }
        if (context_->connections > kMaxConnections) {
            sendAndClose(HttpReply::error(503, "too many connections to the console"));
            return;
        }
        const AccessGuard& guard = *context_->guard;
        // The entry page takes the token from its URL and sets the cookie; everything else needs
        // the token already.
        if (const auto refusal = guard.check(credentials, request.path == "/")) {
            send(HttpReply::error(refusal->status, refusal->message));
            return;
        }
        request.authorized = guard.carriesToken(credentials);
        request.contentType = std::string(message[http::field::content_type]);
        request.body = parser_->release().body();
        try {
            context_->router->handle(std::move(request), responder());
        } catch (const std::exception& error) {
            // A fault of the console's own: the client learns of it, the other clients carry on.
            sendAndClose(HttpReply::error(500, std::string("the console failed: ") + error.what()));
        }
    }

    Responder responder() {
        return [self = shared_from_this()](HttpReply reply) {
            net::post(self->stream_.get_executor(),
                      [self, reply = std::move(reply)]() mutable { self->send(std::move(reply)); });
        };
    }

    void sendAndClose(HttpReply reply) {
        keepAlive_ = false;
        send(std::move(reply));
    }

    void send(HttpReply reply) {
        response_.emplace(static_cast<http::status>(reply.status), 11);
        auto& header = *response_;
        if (!reply.contentType.empty()) {
            header.set(http::field::content_type, reply.contentType);
        }
        header.set(http::field::cache_control, "no-store");
        header.set("X-Content-Type-Options", "nosniff");
        header.set("X-Frame-Options", "DENY");
        header.set("Referrer-Policy", "no-referrer");
        header.set("Content-Security-Policy", kContentSecurityPolicy);
        for (const auto& [name, value] : reply.headers) {
            header.set(name, value);
        }
        events_ = std::move(reply.events);
        payload_ = std::move(reply.body);
        if (events_) {
            // The stream ends when the connection does.
            keepAlive_ = false;
        } else {
            header.content_length(payload_.size());
        }
        header.keep_alive(keepAlive_);
        serializer_.emplace(header);
        stream_.expires_after(kTransferTimeout);
        http::async_write_header(stream_, *serializer_,
                                 [self = shared_from_this()](beast::error_code error, size_t) {
                                     self->onHeaderSent(error);
                                 });
    }

    void onHeaderSent(beast::error_code error) {
        if (error) {
            close();
            return;
        }
        if (events_) {
            stream_.expires_never();
            pumpEvents();
            return;
        }
        std::vector<net::const_buffer> buffers;
        for (const auto& [data, size] : payload_.pieces) {
            buffers.emplace_back(data, size);
        }
        net::async_write(stream_, buffers,
                         [self = shared_from_this()](beast::error_code failed, size_t) {
                             self->onBodySent(failed);
                         });
    }

    void onBodySent(beast::error_code error) {
        payload_ = Payload();
        if (error) {
            close();
        } else if (!keepAlive_) {
            lingerThenClose();
        } else {
            readHeader();
        }
    }

    // Says it is done sending, then reads and drops what the client still sends (the rest of a
    // refused body) for a while, so that closing does not reset the connection before the client
    // has read the answer.
    void lingerThenClose() {
        beast::error_code ignored;
        stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
        stream_.expires_after(kLinger);
        drain();
    }

    void drain() {
        stream_.async_read_some(net::buffer(discard_),
                                [self = shared_from_this()](beast::error_code error, size_t) {
                                    if (error) {
                                        self->close();
                                    } else {
                                        self->drain();
                                    }
                                });
    }

    void pumpEvents() {
        if (writing_) {
            return;
        }
        std::weak_ptr<Session> weak = weak_from_this();
        auto executor = stream_.get_executor();
        eventText_ = events_->next([weak, executor] {
            net::post(executor, [weak] {
                if (auto self = weak.lock()) {
                    self->pumpEvents();
                }
            });
        });
        if (eventText_.empty()) {
            armKeepAlive();
            return;
        }
        writeEvents();
    }

    void armKeepAlive() {
        keepAliveTimer_.expires_after(kEventKeepAlive);
        // The pending wait keeps the session alive while it has nothing to send.
        keepAliveTimer_.async_wait([self = shared_from_this()](beast::error_code error) {
            if (!error && !self->writing_) {
                self->eventText_ = ": keep-alive\n\n";
                self->writeEvents();
            }
        });
    }

    void writeEvents() {
        writing_ = true;
        keepAliveTimer_.cancel();
        stream_.expires_after(kTransferTimeout);
        net::async_write(stream_, net::buffer(eventText_),
                         [self = shared_from_this()](beast::error_code error, size_t) {
                             self->writing_ = false;
                             if (error) {
                                 self->close();
                                 return;
                             }
                             self->stream_.expires_never();
                             self->pumpEvents();
                         });
    }

    void close() {
        keepAliveTimer_.cancel();
        beast::error_code ignored;
        stream_.socket().shutdown(tcp::socket::shutdown_both, ignored);
        stream_.close();
    }

    beast::tcp_stream stream_;
    std::shared_ptr<HttpServer::Context> context_;
    net::steady_timer keepAliveTimer_;
    beast::flat_buffer buffer_;
    std::optional<http::request_parser<http::string_body>> parser_;
    std::optional<http::response<http::empty_body>> continue_;
    std::optional<http::response<http::empty_body>> response_;
    std::optional<http::response_serializer<http::empty_body>> serializer_;
    Payload payload_;
    bool keepAlive_ = false;
    std::shared_ptr<EventStream> events_;
    std::string eventText_;
    bool writing_ = false;
    std::array<char, 16 * 1024> discard_;
};

tcp::endpoint endpointOf(const std::string& address, uint16_t port) {
    boost::system::error_code error;
    const net::ip::address ip = net::ip::make_address(address, error);
    if (error) {
        throw std::runtime_error("agentsim: --listen needs an IP address, not '" + address + "'");
    }
    return {ip, port};
}

bool tryListen(tcp::acceptor& acceptor, const tcp::endpoint& endpoint,
               boost::system::error_code& error) {
    boost::system::error_code ignored;
    acceptor.close(ignored);
    acceptor.open(endpoint.protocol(), error);
    if (!error) {
        acceptor.set_option(net::socket_base::reuse_address(true), error);
    }
    if (!error) {
        acceptor.bind(endpoint, error);
    }
    if (!error) {
        acceptor.listen(net::socket_base::max_listen_connections, error);
    }
    return !error;
}

}  // namespace

HttpServer::HttpServer(net::io_context& io, const std::string& address,
                       std::optional<uint16_t> port)
    : io_(io), acceptor_(io), context_(std::make_shared<Context>()) {
    boost::system::error_code error;
    const uint16_t first = port.value_or(kPreferredPort);
    if (!tryListen(acceptor_, endpointOf(address, first), error) && !port &&
        error == net::error::address_in_use) {
        tryListen(acceptor_, endpointOf(address, 0), error);
    }
    if (error) {
        throw std::runtime_error("agentsim: cannot listen on " + address + " port " +
                                 std::to_string(first) + ": " + error.message());
    }
}

HttpServer::~HttpServer() {
    stop();
}

uint16_t HttpServer::port() const {
    return acceptor_.local_endpoint().port();
}

void HttpServer::start(const AccessGuard& guard, Router& router) {
    context_->guard = &guard;
    context_->router = &router;
    accept();
}

void HttpServer::stop() {
    boost::system::error_code ignored;
    acceptor_.close(ignored);
}

void HttpServer::accept() {
    acceptor_.async_accept(net::make_strand(io_),
                           [this](boost::system::error_code error, tcp::socket socket) {
                               if (error == net::error::operation_aborted || !acceptor_.is_open()) {
                                   return;
                               }
                               if (!error) {
                                   std::make_shared<Session>(std::move(socket), context_)->start();
                               }
                               accept();
                           });
}

}  // namespace agentsim::console
