#include "zel/core/Logger.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "NewestEntries.h"
#include "ResetParts.h"
#include "TraceRing.h"
#include "zelsim/HostSim.h"

namespace {

constexpr int32_t kAllSeverities = 9;
constexpr size_t kKeptTraceEvents = 10000;
constexpr size_t kFirstFormatAttempt = 256;

struct LogState {
    std::mutex mutex;
    simcommon::NewestEntries<zelsim::LogLine> lines{zelsim::kKeptEntries};
    zelsim::detail::TraceRing traces{kKeptTraceEvents};
    std::atomic<int32_t> maxSeverity{kAllSeverities};
    std::atomic<uint64_t> testCalls{0};
};

// Never destroyed: the plug-in's threads may still log while the process exits.
LogState& state() {
    static LogState* const instance = new LogState;
    return *instance;
}

// Asked on every line so that a test or a debugging session can switch it on at any time.
bool echoToStderr() {
    return std::getenv("ZELSIM_LOG_STDERR") != nullptr;
}

std::string formatted(const char* format, va_list args) {
    if (!format) {
        return {};
    }
    std::vector<char> buffer(kFirstFormatAttempt);
    for (;;) {
        va_list attempt;
        va_copy(attempt, args);
        const int needed = std::vsnprintf(buffer.data(), buffer.size(), format, attempt);
        va_end(attempt);
        if (needed < 0) {
            return {};
        }
        if (static_cast<size_t>(needed) < buffer.size()) {
            return std::string(buffer.data(), static_cast<size_t>(needed));
        }
        buffer.resize(static_cast<size_t>(needed) + 1);
    }
}

std::string orEmpty(const char* text) {
    return text ? text : "";
}

}  // namespace

namespace Zel {
namespace Core {

Logger& Logger::Instance() {
    static Logger* const instance = new Logger;
    return *instance;
}

bool Logger::test(int32_t /*category*/, int32_t /*channel*/, int32_t severity) {
    LogState& log = state();
    log.testCalls.fetch_add(1, std::memory_order_relaxed);
    return severity <= log.maxSeverity.load(std::memory_order_relaxed);
}

void Logger::log(const char* sourceUnit, int32_t line, const char* function, int32_t /*category*/,
                 int32_t /*channel*/, int32_t severity, const char* format, ...) {
    va_list args;
    va_start(args, format);
    zelsim::LogLine entry{severity, orEmpty(sourceUnit), line, orEmpty(function),
                          formatted(format, args)};
    va_end(args);

    if (echoToStderr()) {
        std::fprintf(stderr, "[%d] %s: %s\n", static_cast<int>(severity), entry.function.c_str(),
                     entry.text.c_str());
    }
    LogState& log = state();
    std::lock_guard<std::mutex> lock(log.mutex);
    log.lines.add(std::move(entry));
}

FunctionTrace::FunctionTrace(const char* function, const char* sourceUnit, int32_t line,
                             int32_t /*component*/)
    : function_(function), sourceUnit_(sourceUnit) {
    LogState& log = state();
    std::lock_guard<std::mutex> lock(log.mutex);
    log.traces.record(true, function_, sourceUnit_, line);
}

FunctionTrace::~FunctionTrace() {
    LogState& log = state();
    std::lock_guard<std::mutex> lock(log.mutex);
    log.traces.record(false, function_, sourceUnit_, 0);
}

}  // namespace Core
}  // namespace Zel

namespace zelsim {

std::vector<LogLine> takeLogLines(uint64_t* dropped) {
    LogState& log = state();
    std::lock_guard<std::mutex> lock(log.mutex);
    return log.lines.take(dropped);
}

std::vector<TraceEvent> takeTraceEvents() {
    LogState& log = state();
    std::lock_guard<std::mutex> lock(log.mutex);
    return log.traces.take();
}

void setMaxLoggedSeverity(int32_t severity) {
    state().maxSeverity.store(severity, std::memory_order_relaxed);
}

uint64_t loggerTestCalls() {
    return state().testCalls.load(std::memory_order_relaxed);
}

namespace detail {

// The test-call counter runs from process start, so it is left alone here.
void resetLogging() {
    LogState& log = state();
    log.maxSeverity.store(kAllSeverities, std::memory_order_relaxed);
    std::lock_guard<std::mutex> lock(log.mutex);
    log.lines.clear();
    log.traces.clear();
}

}  // namespace detail
}  // namespace zelsim
