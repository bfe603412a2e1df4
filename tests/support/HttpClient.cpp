#include "support/HttpClient.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <cctype>
#include <stdexcept>

namespace testing_support {

namespace net = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = net::ip::tcp;

namespace {

constexpr auto kPatience = std::chrono::seconds(30);

std::string lower(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

http::request<http::string_body> requestFor(uint16_t port, const HttpCall& call) {
    http::request<http::string_body> request(http::string_to_verb(call.method), call.target, 11);
    bool hasHost = false;
    for (const auto& [name, value] : call.headers) {
        request.insert(name, value);
        hasHost = hasHost || lower(name) == "host";
    }
    if (!hasHost) {
        request.set(http::field::host, "127.0.0.1:" + std::to_string(port));
    }
    request.keep_alive(false);
    request.body() = call.body;
    if (!call.body.empty() || call.method == "POST") {
        request.prepare_payload();
    }
    return request;
}

}  // namespace

// Runs an asynchronous operation on `io` to its end; the stream's expiry bounds it.
template <typename Start>
void complete(net::io_context& io, Start start) {
    beast::error_code error;
    start([&](beast::error_code result, size_t) { error = result; });
    io.restart();
    io.run();
    if (error) {
        throw std::runtime_error("HTTP exchange with the console failed: " + error.message());
    }
}

HttpAnswer httpCall(uint16_t port, const HttpCall& call) {
    net::io_context io;
    beast::tcp_stream stream(io);
    stream.expires_after(kPatience);
    stream.connect(tcp::endpoint(net::ip::make_address("127.0.0.1"), port));
    const http::request<http::string_body> request = requestFor(port, call);
    complete(io, [&](auto done) { http::async_write(stream, request, done); });
    beast::flat_buffer buffer;
    http::response_parser<http::string_body> parser;
    parser.body_limit(512 * 1024 * 1024);
    complete(io, [&](auto done) { http::async_read(stream, buffer, parser, done); });
    HttpAnswer answer;
    answer.status = static_cast<int>(parser.get().result_int());
    for (const auto& field : parser.get()) {
        answer.headers[lower(std::string(field.name_string()))] = std::string(field.value());
    }
    answer.body = parser.get().body();
    return answer;
}

struct EventStreamReader::Connection {
    net::io_context io;
    beast::tcp_stream stream{io};
    beast::flat_buffer buffer;
};

EventStreamReader::EventStreamReader(
    uint16_t port, const std::vector<std::pair<std::string, std::string>>& headers)
    : connection_(std::make_unique<Connection>()) {
    HttpCall call;
    call.target = "/api/feed";
    call.headers = headers;
    beast::tcp_stream& stream = connection_->stream;
    stream.expires_after(kPatience);
    stream.connect(tcp::endpoint(net::ip::make_address("127.0.0.1"), port));
    const http::request<http::string_body> request = requestFor(port, call);
    complete(connection_->io, [&](auto done) { http::async_write(stream, request, done); });
    http::response_parser<http::empty_body> parser;
    parser.skip(true);  // the body is the stream, read below
    complete(connection_->io, [&](auto done) {
        http::async_read_header(stream, connection_->buffer, parser, done);
    });
    status_ = static_cast<int>(parser.get().result_int());
    const auto pending = connection_->buffer.data();
    received_.assign(static_cast<const char*>(pending.data()), pending.size());
    connection_->buffer.consume(pending.size());
}

EventStreamReader::~EventStreamReader() = default;

bool EventStreamReader::readUntil(const std::string& text, std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (received_.find(text) == std::string::npos) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        connection_->stream.expires_at(deadline);
        char chunk[4096];
        size_t count = 0;
        try {
            complete(connection_->io, [&](auto done) {
                connection_->stream.async_read_some(
                    net::buffer(chunk), [&, done](beast::error_code error, size_t read) {
                        count = read;
                        done(error, read);
                    });
            });
        } catch (const std::runtime_error&) {
            return received_.find(text) != std::string::npos;
        }
        received_.append(chunk, count);
    }
    return true;
}

}  // namespace testing_support
