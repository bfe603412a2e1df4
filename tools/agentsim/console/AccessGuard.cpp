#include "AccessGuard.h"

#include <openssl/crypto.h>
#include <openssl/rand.h>
#include <unistd.h>

#include <algorithm>
#include <boost/asio/ip/address.hpp>
#include <cctype>
#include <stdexcept>

namespace agentsim::console {
namespace {

namespace ip = boost::asio::ip;

struct HostAndPort {
    std::string name;  // without the brackets of an IPv6 literal
    std::optional<uint16_t> port;
};

std::optional<uint16_t> portNumber(std::string_view text) {
    if (text.empty() || text.size() > 5 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return std::isdigit(c) != 0; })) {
        return std::nullopt;
    }
    const unsigned long value = std::stoul(std::string(text));
    if (value > 65535) {
        return std::nullopt;
    }
    return static_cast<uint16_t>(value);
}

std::optional<HostAndPort> splitHost(std::string_view host) {
    HostAndPort parts;
    std::string_view rest;
    if (!host.empty() && host.front() == '[') {
        const size_t close = host.find(']');
        if (close == std::string_view::npos) {
            return std::nullopt;
        }
        parts.name = std::string(host.substr(1, close - 1));
        rest = host.substr(close + 1);
    } else {
        const size_t colon = host.find(':');
        parts.name = std::string(host.substr(0, colon));
        rest = colon == std::string_view::npos ? std::string_view() : host.substr(colon);
    }
    if (!rest.empty()) {
        if (rest.front() != ':' || !(parts.port = portNumber(rest.substr(1)))) {
            return std::nullopt;
        }
    }
    return parts;
}

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool isIpLiteral(const std::string& name) {
    boost::system::error_code error;
    ip::make_address(name, error);
    return !error;
}

std::string machineName() {
    char name[256] = {};
    if (gethostname(name, sizeof name - 1) != 0) {
        return std::string();
    }
    return lowerCase(name);
}

std::string urlHost(const std::string& address) {
    return address.find(':') != std::string::npos ? "[" + address + "]" : address;
}

}  // namespace

AccessGuard::AccessGuard(std::string address, uint16_t port, std::string token)
    : address_(std::move(address)), port_(port), token_(std::move(token)) {
    boost::system::error_code error;
    const ip::address parsed = ip::make_address(address_, error);
    if (error) {
        throw std::invalid_argument("agentsim: not an IP address: " + address_);
    }
    address_ = parsed.to_string();
    wildcard_ = parsed.is_unspecified();
    loopback_ = parsed.is_loopback();
}

std::string AccessGuard::cookieName() const {
    return "agentsim-console-" + std::to_string(port_);
}

std::string AccessGuard::cookieHeader() const {
    return cookieName() + "=" + token_ + "; Path=/; HttpOnly; SameSite=Strict";
}

std::string AccessGuard::entryUrl() const {
    const std::string host = wildcard_ ? "127.0.0.1" : urlHost(address_);
    return "http://" + host + ":" + std::to_string(port_) + "/?token=" + token_;
}

bool AccessGuard::tokenMatches(std::string_view candidate) const {
    return candidate.size() == token_.size() &&
           CRYPTO_memcmp(candidate.data(), token_.data(), token_.size()) == 0;
}

bool AccessGuard::hostAllowed(std::string_view host) const {
    const std::optional<HostAndPort> parts = splitHost(host);
    if (!parts || parts->port.value_or(80) != port_) {
        return false;
    }
    const std::string name = lowerCase(parts->name);
    if (name == "localhost") {
        return loopback_ || wildcard_;
    }
    if (wildcard_) {
        return isIpLiteral(name) || (!name.empty() && name == machineName());
    }
    boost::system::error_code error;
    const ip::address named = ip::make_address(name, error);
    return !error && named.to_string() == address_;
}

bool AccessGuard::carriesToken(const RequestCredentials& request) const {
    if (!request.tokenHeader.empty()) {
        return tokenMatches(request.tokenHeader);
    }
    const std::optional<std::string_view> cookie = cookieValue(request.cookie, cookieName());
    return cookie && tokenMatches(*cookie);
}

bool AccessGuard::sameOrigin(const RequestCredentials& request) const {
    if (!request.origin.empty()) {
        return lowerCase(std::string(request.origin)) ==
               "http://" + lowerCase(std::string(request.host));
    }
    // Browsers that leave Origin out of a same-origin request still say where it came from.
    return request.fetchSite == "same-origin";
}

std::optional<Refusal> AccessGuard::check(const RequestCredentials& request,
                                          bool tokenOptional) const {
    if (!hostAllowed(request.host)) {
        return Refusal{403, "this console answers only to its own address (Host header \"" +
                                std::string(request.host) + "\")"};
    }
    if (!tokenOptional && !carriesToken(request)) {
        return Refusal{401,
                       "the console's access token is missing or wrong: open the address "
                       "agentsim printed"};
    }
    const bool changesState = request.method != "GET" && request.method != "HEAD";
    if (changesState && !sameOrigin(request)) {
        return Refusal{403,
                       "a request that changes something must come from the console's own "
                       "page"};
    }
    return std::nullopt;
}

std::string newAccessToken() {
    unsigned char bytes[16];
    if (RAND_bytes(bytes, sizeof bytes) != 1) {
        throw std::runtime_error("agentsim: no random bytes for the console's access token");
    }
    static const char kHex[] = "0123456789abcdef";
    std::string token;
    for (unsigned char byte : bytes) {
        token += kHex[byte >> 4];
        token += kHex[byte & 0xF];
    }
    return token;
}

std::optional<std::string_view> cookieValue(std::string_view header, std::string_view name) {
    while (!header.empty()) {
        const size_t end = std::min(header.find(';'), header.size());
        std::string_view pair = header.substr(0, end);
        header.remove_prefix(std::min(end + 1, header.size()));
        while (!pair.empty() && pair.front() == ' ') {
            pair.remove_prefix(1);
        }
        const size_t equals = pair.find('=');
        if (equals != std::string_view::npos && pair.substr(0, equals) == name) {
            return pair.substr(equals + 1);
        }
    }
    return std::nullopt;
}

}  // namespace agentsim::console
