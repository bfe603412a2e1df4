// Who may talk to the console: requests must name the console's own address (against DNS
// rebinding), carry the per-run token, and come from the console's own page when they change
// something.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace agentsim::console {

// The headers of a request that the rules look at; empty when the request has none.
struct RequestCredentials {
    std::string_view method;
    std::string_view host;
    std::string_view origin;
    std::string_view fetchSite;  // Sec-Fetch-Site
    std::string_view cookie;
    std::string_view tokenHeader;  // X-Console-Token
};

struct Refusal {
    int status;
    std::string message;
};

class AccessGuard {
public:
    // `address` is the IP address the console listens on (a wildcard address accepts any IP
    // literal and this machine's name); `port` the port it got.
    AccessGuard(std::string address, uint16_t port, std::string token);

    const std::string& token() const { return token_; }
    // The cookie that carries the token; named after the port so that two consoles coexist.
    std::string cookieName() const;
    std::string cookieHeader() const;
    // The address to open in a browser, token included.
    std::string entryUrl() const;

    bool tokenMatches(std::string_view candidate) const;
    // The request carries the token, in the X-Console-Token header or in the console's cookie.
    bool carriesToken(const RequestCredentials& request) const;
    // The first rule the request breaks, if any. `tokenOptional` exempts a request from the token
    // rule (the entry page, which sets the cookie from the URL's token).
    std::optional<Refusal> check(const RequestCredentials& request, bool tokenOptional) const;

private:
    bool hostAllowed(std::string_view host) const;
    bool sameOrigin(const RequestCredentials& request) const;

    std::string address_;
    uint16_t port_;
    std::string token_;
    bool wildcard_ = false;
    bool loopback_ = false;
};

// A fresh token: 128 random bits as 32 hex digits.
std::string newAccessToken();

// The value of cookie `name` in a Cookie header, if it has one.
std::optional<std::string_view> cookieValue(std::string_view header, std::string_view name);

}  // namespace agentsim::console
