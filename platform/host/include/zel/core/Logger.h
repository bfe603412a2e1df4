// Agent logging: the process-wide logger and the scoped function trace.
#pragma once

#include <cstdint>

namespace Zel {
namespace Core {

class Logger {
public:
    static Logger& Instance();

    // True when a message of this category, channel and severity would be kept; callers ask
    // before formatting so that filtered messages cost nothing.
    bool test(int32_t category, int32_t channel, int32_t severity);

    void log(const char* sourceUnit, int32_t line, const char* function, int32_t category,
             int32_t channel, int32_t severity, const char* format, ...)
        __attribute__((format(printf, 8, 9)));

private:
    Logger() = default;
};

// Marks the whole run of a function in the agent's trace, from construction to destruction.
class FunctionTrace {
public:
    FunctionTrace(const char* function, const char* sourceUnit, int32_t line, int32_t component);
    ~FunctionTrace();
    FunctionTrace(const FunctionTrace&) = delete;
    FunctionTrace& operator=(const FunctionTrace&) = delete;

private:
    const char* function_;
    const char* sourceUnit_;
};

}  // namespace Core
}  // namespace Zel
