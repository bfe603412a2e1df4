// A small HTTP client for tests of the console: one request per connection, any header the test
// wants (a foreign Host, an Origin), and an event-stream reader.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

struct HttpAnswer {
    int status = 0;
    std::map<std::string, std::string> headers;  // names in lower case
    std::string body;
};

struct HttpCall {
    std::string method = "GET";
    std::string target = "/";
    // Sent as given; a Host header is added unless one is here.
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
};

// Sends `call` to 127.0.0.1:`port` and reads the whole answer. Throws std::runtime_error when the
// server cannot be reached or answers nothing within 30 seconds.
HttpAnswer httpCall(uint16_t port, const HttpCall& call);

// Reads a server-sent event stream as it comes.
class EventStreamReader {
public:
    EventStreamReader(uint16_t port,
                      const std::vector<std::pair<std::string, std::string>>& headers);
    ~EventStreamReader();
    int status() const { return status_; }
    // Reads until the text received holds `text`; false when `patience` runs out first.
    bool readUntil(const std::string& text, std::chrono::milliseconds patience);
    const std::string& received() const { return received_; }

private:
    struct Connection;
    std::unique_ptr<Connection> connection_;
    int status_ = 0;
    std::string received_;
};

}  // namespace testing_support
