// What the console's HTTP server hands to its router and gets back, free of the HTTP library.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace agentsim::console {

struct HttpRequest {
    std::string method;
    std::string path;                          // percent-decoded, without the query
    std::map<std::string, std::string> query;  // percent-decoded
    std::string contentType;
    std::string body;
    bool authorized = false;  // it carried the console's access token
};

// Bytes to send that live elsewhere: `owner` keeps them alive until they are written.
struct Payload {
    std::shared_ptr<const void> owner;
    std::vector<std::pair<const void*, size_t>> pieces;

    size_t size() const;
    static Payload of(std::string text);
};

// A stream of server-sent events. `next` returns the text ready to send now; when there is none
// it returns an empty text and calls `wake` (once, from any thread) when there is.
class EventStream {
public:
    virtual ~EventStream() = default;
    virtual std::string next(std::function<void()> wake) = 0;
};

struct HttpReply {
    int status = 200;
    std::string contentType;
    Payload body;
    std::vector<std::pair<std::string, std::string>> headers;
    // Set for an event stream: the body is then this stream's text, until the client leaves.
    std::shared_ptr<EventStream> events;

    static HttpReply json(int status, std::string text);
    static HttpReply error(int status, std::string_view message);
};

// Answers one request; may be called on any thread, exactly once.
using Responder = std::function<void(HttpReply)>;

class Router {
public:
    virtual ~Router() = default;
    virtual void handle(HttpRequest request, Responder respond) = 0;
};

}  // namespace agentsim::console
