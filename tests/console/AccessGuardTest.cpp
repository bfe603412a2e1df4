// The console's access rules: its own address in the Host header, the run's token, and the page's
// own origin for requests that change something.
#include <gtest/gtest.h>

#include "AccessGuard.h"

namespace agentsim::console {
namespace {

constexpr const char* kToken = "00112233445566778899aabbccddeeff";

RequestCredentials fromPage(std::string_view method, std::string_view host) {
    RequestCredentials request;
    request.method = method;
    request.host = host;
    request.tokenHeader = kToken;
    return request;
}

TEST(ConsoleAccess, HostMustNameTheListeningAddress) {
    const AccessGuard loopback("127.0.0.1", 8080, kToken);
    for (const char* host : {"127.0.0.1:8080", "localhost:8080", "LOCALHOST:8080"}) {
        EXPECT_FALSE(loopback.check(fromPage("GET", host), false)) << host;
    }
    for (const char* host : {"evil.example:8080", "127.0.0.1:8081", "127.0.0.1", "",
                             "localhost.:8080", "127.0.0.1:80a", "[::1]:8080", "127.0.0.2:8080"}) {
        const auto refusal = loopback.check(fromPage("GET", host), false);
        ASSERT_TRUE(refusal) << host;
        EXPECT_EQ(refusal->status, 403) << host;
    }

    const AccessGuard v6("::1", 9000, kToken);
    EXPECT_FALSE(v6.check(fromPage("GET", "[::1]:9000"), false));
    EXPECT_FALSE(v6.check(fromPage("GET", "localhost:9000"), false));
    EXPECT_TRUE(v6.check(fromPage("GET", "127.0.0.1:9000"), false));

    const AccessGuard lan("192.168.1.20", 8080, kToken);
    EXPECT_FALSE(lan.check(fromPage("GET", "192.168.1.20:8080"), false));
    EXPECT_TRUE(lan.check(fromPage("GET", "localhost:8080"), false))
        << "a console on another address is not this machine's loopback";

    // A wildcard address takes any IP literal (a rebinding attack needs a name), never a foreign
    // name.
    const AccessGuard any("0.0.0.0", 8080, kToken);
    EXPECT_FALSE(any.check(fromPage("GET", "10.0.0.7:8080"), false));
    EXPECT_FALSE(any.check(fromPage("GET", "[fe80::1]:8080"), false));
    EXPECT_TRUE(any.check(fromPage("GET", "attacker.example:8080"), false));
}

TEST(ConsoleAccess, EveryRequestCarriesTheToken) {
    const AccessGuard guard("127.0.0.1", 8080, kToken);
    RequestCredentials request = fromPage("GET", "127.0.0.1:8080");
    request.tokenHeader = "";
    const auto missing = guard.check(request, false);
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->status, 401);
    EXPECT_FALSE(guard.check(request, true)) << "the entry page sets the cookie";

    const std::string cookie = "theme=dark; " + guard.cookieName() + "=" + kToken + "; x=1";
    request.cookie = cookie;
    EXPECT_FALSE(guard.check(request, false));

    const std::string wrong = guard.cookieName() + "=" + std::string(kToken).replace(0, 1, "f");
    request.cookie = wrong;
    EXPECT_TRUE(guard.check(request, false));
    request.cookie = "";
    request.tokenHeader = "0011";
    EXPECT_TRUE(guard.check(request, false)) << "a prefix of the token is not the token";
    const std::string otherPort = "agentsim-console-8081=" + std::string(kToken);
    request.tokenHeader = "";
    request.cookie = otherPort;
    EXPECT_TRUE(guard.check(request, false)) << "another console's cookie";
}

TEST(ConsoleAccess, ChangesComeFromTheConsolesOwnPage) {
    const AccessGuard guard("127.0.0.1", 8080, kToken);
    RequestCredentials request = fromPage("POST", "127.0.0.1:8080");
    request.origin = "http://127.0.0.1:8080";
    EXPECT_FALSE(guard.check(request, false));

    for (const char* origin :
         {"http://evil.example", "http://127.0.0.1:8081", "null", "https://127.0.0.1:8080"}) {
        request.origin = origin;
        const auto refusal = guard.check(request, false);
        ASSERT_TRUE(refusal) << origin;
        EXPECT_EQ(refusal->status, 403) << origin;
    }

    request.origin = "";
    EXPECT_TRUE(guard.check(request, false)) << "no Origin and no Sec-Fetch-Site";
    request.fetchSite = "same-origin";
    EXPECT_FALSE(guard.check(request, false));
    request.fetchSite = "cross-site";
    EXPECT_TRUE(guard.check(request, false));

    EXPECT_FALSE(guard.check(fromPage("GET", "127.0.0.1:8080"), false))
        << "reading needs no Origin";
}

TEST(ConsoleAccess, TokensAndTheirAddress) {
    const std::string token = newAccessToken();
    EXPECT_EQ(token.size(), 32u);
    EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_NE(token, newAccessToken());

    EXPECT_EQ(AccessGuard("127.0.0.1", 8080, "abc").entryUrl(), "http://127.0.0.1:8080/?token=abc");
    EXPECT_EQ(AccessGuard("::1", 81, "abc").entryUrl(), "http://[::1]:81/?token=abc");
    EXPECT_EQ(AccessGuard("0.0.0.0", 81, "abc").entryUrl(), "http://127.0.0.1:81/?token=abc");
    EXPECT_EQ(AccessGuard("127.0.0.1", 8080, "abc").cookieHeader(),
              "agentsim-console-8080=abc; Path=/; HttpOnly; SameSite=Strict");
    EXPECT_THROW(AccessGuard("localhost", 8080, "abc"), std::invalid_argument);

    EXPECT_EQ(cookieValue("a=1; b=2", "b"), std::string_view("2"));
    EXPECT_EQ(cookieValue("ab=1", "b"), std::nullopt);
    EXPECT_EQ(cookieValue("", "b"), std::nullopt);
}

}  // namespace
}  // namespace agentsim::console
