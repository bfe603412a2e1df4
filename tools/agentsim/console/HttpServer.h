// The console's HTTP server, on Boost.Beast: one thread does all the network work without ever
// waiting on a client; requests that pass the access rules go to the router, whose answers may
// come later from other threads. Each client has its own connection state, so a slow or vanished
// client holds up nobody else.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "AccessGuard.h"
#include "HttpTypes.h"

namespace agentsim::console {

constexpr size_t kMaxRequestBody = 1024 * 1024;
constexpr uint16_t kPreferredPort = 8080;

class HttpServer {
public:
    // Listens on `address` (an IP address) at `port`; without a port, at kPreferredPort or, when
    // that is taken, at any free port. Throws std::runtime_error naming the address on failure.
    HttpServer(boost::asio::io_context& io, const std::string& address,
               std::optional<uint16_t> port);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    uint16_t port() const;
    // Starts accepting; `guard` and `router` must outlive the server's io_context work.
    void start(const AccessGuard& guard, Router& router);
    void stop();

    struct Context;

private:
    void accept();

    boost::asio::io_context& io_;
    boost::asio::ip::tcp::acceptor acceptor_;
    std::shared_ptr<Context> context_;
};

}  // namespace agentsim::console
