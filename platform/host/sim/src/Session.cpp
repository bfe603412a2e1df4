#include "zel/ZelSession.h"

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_set>
#include <utility>

#include "NewestEntries.h"
#include "ResetParts.h"
#include "zelsim/HostSim.h"

namespace {

constexpr int32_t kStateIdle = 1;
constexpr int32_t kStateCodeIssued = 4;

struct SessionState {
    std::mutex mutex;
    zelsim::Session session;
    simcommon::NewestEntries<zelsim::HostCall> calls{zelsim::kKeptEntries};
    simcommon::NewestEntries<std::string> messages{zelsim::kKeptEntries};
    std::function<void()> statusReadHook;
    // Every ZelGetStatus counts; a ZelFreeStatus only counts off a record that is outstanding,
    // so freeing one record twice cannot hide a leak elsewhere, and filling a record again
    // before freeing it (which loses its first code) stays counted.
    std::unordered_set<const ZelStatus*> outstandingRecords;
    int64_t outstandingCount = 0;
};

// Never destroyed: the plug-in's threads may still call while the process exits.
SessionState& state() {
    static SessionState* const instance = new SessionState;
    return *instance;
}

char* copyOf(const std::optional<std::string>& code) {
    return code ? strdup(code->c_str()) : nullptr;
}

void recordRelease(SessionState& current, const ZelStatus* record) {
    if (current.outstandingRecords.erase(record) > 0) {
        --current.outstandingCount;
    }
}

}  // namespace

extern "C" {

int32_t ZelSessionInit(int32_t mode) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.calls.add(zelsim::HostCall{"ZelSessionInit", mode});
    zelsim::Session& session = current.session;
    if (session.initResult == 0) {
        session.state = kStateCodeIssued;
        session.code = session.codeOnInit;
    }
    return session.initResult;
}

void ZelSessionTerm(void) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.calls.add(zelsim::HostCall{"ZelSessionTerm", std::nullopt});
    current.session.state = kStateIdle;
    current.session.code.reset();
}

void ZelCheckForSoftwareUpdate(void) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.calls.add(zelsim::HostCall{"ZelCheckForSoftwareUpdate", std::nullopt});
}

int32_t ZelGetStatus(int32_t /*flags*/, ZelStatus* status) {
    if (!status) {
        return -1;
    }
    SessionState& current = state();
    std::function<void()> hook;
    {
        std::lock_guard<std::mutex> lock(current.mutex);
        hook = current.statusReadHook;
    }
    if (hook) {
        hook();
    }
    std::lock_guard<std::mutex> lock(current.mutex);
    std::memset(status, 0, sizeof(*status));
    status->initialized = current.session.initialized;
    status->state = current.session.state;
    status->sessionCode = copyOf(current.session.code);
    current.outstandingRecords.insert(status);
    ++current.outstandingCount;
    return 0;
}

void ZelFreeStatus(ZelStatus* status) {
    if (!status) {
        return;
    }
    std::free(status->sessionCode);
    status->sessionCode = nullptr;
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    recordRelease(current, status);
}

void ZelLogMessage(int32_t /*level*/, const char* message) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.messages.add(message ? message : "");
}

}  // extern "C"

namespace zelsim {

Session session() {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    return current.session;
}

void setSession(const Session& session) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.session = session;
}

std::vector<HostCall> takeCalls(uint64_t* dropped) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    return current.calls.take(dropped);
}

std::vector<std::string> takeMessages(uint64_t* dropped) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    return current.messages.take(dropped);
}

void setStatusReadHook(std::function<void()> hook) {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.statusReadHook = std::move(hook);
}

int64_t unreleasedStatusRecords() {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    return current.outstandingCount;
}

namespace detail {

void resetSession() {
    SessionState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.session = Session{};
    current.calls.clear();
    current.messages.clear();
    current.statusReadHook = nullptr;
    current.outstandingRecords.clear();
    current.outstandingCount = 0;
}

}  // namespace detail
}  // namespace zelsim
