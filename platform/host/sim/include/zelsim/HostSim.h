// Control side of the simulated agent: what a test or agentsim scripts and observes. The plug-in
// never includes this header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zelsim {

struct LogLine {
    int32_t severity = 0;
    std::string sourceUnit;
    int32_t line = 0;
    std::string function;
    std::string text;  // the formatted message
};

struct TraceEvent {
    bool enter = true;  // false when the trace object was destroyed
    std::string function;
    std::string sourceUnit;
    int32_t line = 0;
};

// Each record below keeps only this many of its newest entries, so that a long run which never
// takes them stays small; `dropped` (when given) receives how many older ones were not kept.
constexpr size_t kKeptEntries = 10000;

// Every Logger::log call, in order, since the last take.
std::vector<LogLine> takeLogLines(uint64_t* dropped = nullptr);
// Function traces since the last take (the most recent 10000 are kept).
std::vector<TraceEvent> takeTraceEvents();
// Logger::test answers true for severities up to this value (default: all, 9).
void setMaxLoggedSeverity(int32_t severity);
// Counts every Logger::test call since start, so callers can check that tests precede logs.
uint64_t loggerTestCalls();

struct Identity {
    std::string opid = "0011223344AB";
    std::string id = "NRDP-SIM-0001";
    std::string esn = "NVSIM-0000000001";
    std::string brand = "Norvane";
    std::string date = "2026-11-23 10:00:00";
    int64_t uptime = 3600;
    int32_t speedResult = 0;
    double speedUp = 18.5;
    double speedDown = 94.25;
};
Identity identity();
void setIdentity(const Identity& identity);

// The agent's remote-support session as ZelGetStatus reports it.
struct Session {
    int32_t initialized = 1;
    int32_t state = 1;
    std::optional<std::string> code;    // absent: the record's session code is null
    int32_t initResult = 0;             // what ZelSessionInit returns
    std::string codeOnInit = "123456";  // the code a successful init produces
};
Session session();
void setSession(const Session& session);

struct HostCall {
    std::string function;  // "ZelSessionInit", "ZelSessionTerm", "ZelCheckForSoftwareUpdate"
    std::optional<int32_t> argument;
};
// Session calls the plug-in made since the last take.
std::vector<HostCall> takeCalls(uint64_t* dropped = nullptr);
// ZelLogMessage lines since the last take.
std::vector<std::string> takeMessages(uint64_t* dropped = nullptr);

// Runs on the caller's thread at the start of every ZelGetStatus, before the record is filled,
// so that a test can hold one status read back and order it against other calls. Empty: none.
void setStatusReadHook(std::function<void()> hook);

// Outstanding records: ZelGetStatus calls not yet matched by ZelFreeStatus.
int64_t unreleasedStatusRecords();

// Back to the initial state: no log lines, default identity and session, no calls.
void reset();

}  // namespace zelsim
