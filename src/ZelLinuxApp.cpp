#include "ZelLinuxApp.h"

#include <pthread.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "bridge/BizDataModule.h"
#include "bridge/BizDiagnostics.h"
#include "bridge/BizIdentity.h"
#include "bridge/BizScreenCapture.h"
#include "bridge/ZelBizClient.h"
#include "common/ConsoleLog.h"
#include "common/Seams.h"
#include "csp/OsalThread.h"
#include "zel/ZelSession.h"

namespace norvane {
namespace {

constexpr int32_t kPollSeconds = 3;
constexpr int32_t kPauseAfterTermSeconds = 2;
constexpr int64_t kCodeLifeSeconds = 120;
constexpr int32_t kCodeWaitSeconds = 60;

constexpr int32_t kStateCodeIssued = 4;
constexpr int32_t kStateConnected = 5;
constexpr int32_t kStateDisconnected = 6;
constexpr int32_t kStateUpdateAvailable = 7;

void initMonotonicCondition(pthread_cond_t* condition) {
    pthread_condattr_t attributes;
    pthread_condattr_init(&attributes);
    pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
    pthread_cond_init(condition, &attributes);
    pthread_condattr_destroy(&attributes);
}

timespec secondsFromNow(int32_t seconds) {
    timespec deadline = clock::monotonicNow();
    deadline.tv_sec += seconds;
    return deadline;
}

int64_t wholeSecondsSince(const timespec& then) {
    const timespec now = clock::monotonicNow();
    const int64_t nanoseconds =
        (now.tv_sec - then.tv_sec) * 1000000000LL + (now.tv_nsec - then.tv_nsec);
    return nanoseconds / 1000000000LL;
}

// One poll thread's stop request and its interruptible sleeps. Shared by the thread and the
// controller; the last of the two to let go frees it, so nothing is destroyed while in use.
class PollControl {
public:
    PollControl() {
        pthread_mutex_init(&mutex_, nullptr);
        initMonotonicCondition(&wake_);
    }
    ~PollControl() {
        pthread_cond_destroy(&wake_);
        pthread_mutex_destroy(&mutex_);
    }
    PollControl(const PollControl&) = delete;
    PollControl& operator=(const PollControl&) = delete;

    void requestStop() {
        pthread_mutex_lock(&mutex_);
        stopRequested_ = true;
        pthread_cond_broadcast(&wake_);
        pthread_mutex_unlock(&mutex_);
    }

    bool stopRequested() {
        pthread_mutex_lock(&mutex_);
        const bool stop = stopRequested_;
        pthread_mutex_unlock(&mutex_);
        return stop;
    }

    // Sleeps on the plug-in clock; false when a stop cut the sleep short.
    bool sleepSeconds(int32_t seconds) {
        const timespec deadline = secondsFromNow(seconds);
        pthread_mutex_lock(&mutex_);
        while (!stopRequested_ && clock::timedWait(&wake_, &mutex_, deadline) != ETIMEDOUT) {
        }
        const bool stop = stopRequested_;
        pthread_mutex_unlock(&mutex_);
        return !stop;
    }

private:
    pthread_mutex_t mutex_;
    pthread_cond_t wake_;
    bool stopRequested_ = false;
};

// The controller's state. The mutex and the two condition variables are made once and never
// destroyed: switching support off must not destroy a mutex or condition variable that the
// poll thread or a waiting code request may still hold or wait on.
struct SessionState {
    SessionState() {
        pthread_mutex_init(&mutex, nullptr);
        initMonotonicCondition(&hostDownCond);
        initMonotonicCondition(&stateCond);
    }

    pthread_mutex_t mutex;
    pthread_cond_t hostDownCond;  // nothing signals it: a wait ends by its time-out
    pthread_cond_t stateCond;
    int32_t hostDownFlag = 0;
    int32_t stateReadyFlag = 0;
    int32_t connectedFlag = 0;
    std::string savedSessionCode;
    timespec savedCodeTime{};
    ZelStatus* cachedStatus = nullptr;
    std::shared_ptr<PollControl> poll;  // the running poll thread's control, if any
};

// Leaked on purpose: a detached poll thread may still use it while the process exits.
SessionState& session() {
    static SessionState* const state = new SessionState;
    return *state;
}

class SessionLock {
public:
    SessionLock() { pthread_mutex_lock(&session().mutex); }
    ~SessionLock() { pthread_mutex_unlock(&session().mutex); }
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;
};

void releaseStatus(ZelStatus* status) {
    if (status != nullptr) {
        ZelFreeStatus(status);
        std::free(status);
    }
}

// Caller holds the mutex.
void replaceCachedStatus(ZelStatus* status) {
    releaseStatus(session().cachedStatus);
    session().cachedStatus = status;
}

// Caller holds the mutex. Ends the agent's session for a code nobody used. The cached status
// belongs to the ended session and goes with it: the agent may well be back in the same state
// with a new code before the next poll, which must still count as a change for the request
// waiting on it.
void terminateUnusedSession() {
    ZelSessionTerm();
    replaceCachedStatus(nullptr);
}

// Written twice, 0 first, so that the TV sees a change even when the value repeats.
void notifyTv(int32_t value) {
    ZelBizClient* client = ZelBizClient::getInstance();
    client->setIntValue(kNotifyKey, 0);
    client->setIntValue(kNotifyKey, value);
}

void expireUnusedCode(PollControl& control) {
    SessionLock lock;
    SessionState& state = session();
    if (state.cachedStatus != nullptr && state.cachedStatus->state == kStateCodeIssued &&
        !state.savedSessionCode.empty() &&
        wholeSecondsSince(state.savedCodeTime) > kCodeLifeSeconds) {
        consoleLog(kLogError, "Session code timeout and not connect, terminate current session");
        terminateUnusedSession();
        control.sleepSeconds(kPauseAfterTermSeconds);
    }
}

// Caller holds the mutex; `status` has a new state (or is the first one seen).
void reportStateChange(const ZelStatus& status) {
    SessionState& state = session();
    switch (status.state) {
        case kStateConnected:
            consoleLog(kLogInfo, "Zel Session connected.");
            consoleLog(kLogInfo, "SetSessionConnectStatus: value=%d\n", 1);
            state.connectedFlag = 1;
            notifyTv(1);
            state.stateReadyFlag = 1;
            break;
        case kStateCodeIssued:
            state.stateReadyFlag = 1;
            break;
        case kStateDisconnected:
            if (state.connectedFlag != 0) {
                consoleLog(kLogInfo, "Zel Session disconnect.");
                consoleLog(kLogInfo, "SetSessionConnectStatus: value=%d\n", 0);
                state.connectedFlag = 0;
                notifyTv(2);
            }
            state.stateReadyFlag = 0;
            break;
        default:
            state.stateReadyFlag = 0;
            break;
    }
}

// Returns false when the poll thread has been told to stop.
bool pollOnce(PollControl& control) {
    expireUnusedCode(control);
    if (control.stopRequested()) {
        return false;
    }
    auto* status = static_cast<ZelStatus*>(std::calloc(1, sizeof(ZelStatus)));
    ZelGetStatus(0, status);
    ZelLogMessage(2, "ZelGetSessionStatus() Triggered");

    SessionLock lock;
    SessionState& state = session();
    // A thread told to stop leaves the state to its successor.
    if (control.stopRequested()) {
        releaseStatus(status);
        return false;
    }
    const ZelStatus* cached = state.cachedStatus;
    if (cached == nullptr || status->initialized != cached->initialized) {
        state.hostDownFlag = status->initialized == 0 ? 1 : 0;
    }
    if (cached != nullptr && status->state == cached->state) {
        replaceCachedStatus(status);
        return true;
    }
    reportStateChange(*status);
    pthread_cond_signal(&state.stateCond);
    replaceCachedStatus(status);
    return true;
}

void* pollSessionStatus(void* argument) {
    std::unique_ptr<std::shared_ptr<PollControl>> owned(
        static_cast<std::shared_ptr<PollControl>*>(argument));
    const std::shared_ptr<PollControl> control = *owned;
    owned.reset();
    while (pollOnce(*control) && control->sleepSeconds(kPollSeconds)) {
    }
    return nullptr;
}

// Caller holds the mutex.
int32_t waitForStateReady(int32_t timeoutSeconds, std::string& code) {
    SessionState& state = session();
    const timespec deadline = secondsFromNow(timeoutSeconds);
    for (;;) {
        if (state.stateReadyFlag != 0) {
            state.stateReadyFlag = 0;
            if (state.cachedStatus == nullptr || state.cachedStatus->sessionCode == nullptr) {
                return 1;
            }
            code = state.cachedStatus->sessionCode;
            return 0;
        }
        if (state.cachedStatus != nullptr && state.cachedStatus->initialized == 0) {
            state.stateReadyFlag = 0;
            return 1;
        }
        const int result = timeoutSeconds > 0
                               ? clock::timedWait(&state.stateCond, &state.mutex, deadline)
                               : pthread_cond_wait(&state.stateCond, &state.mutex);
        if (result != 0) {
            state.stateReadyFlag = 0;
            return 1;
        }
    }
}

enum class SavedCode { None, Valid, Expired };

// Whether the code handed out last is still within its life; a valid one goes to `code`.
SavedCode checkSavedCode(std::string& code) {
    SessionLock lock;
    const SessionState& state = session();
    if (state.savedSessionCode.empty()) {
        return SavedCode::None;
    }
    if (wholeSecondsSince(state.savedCodeTime) <= kCodeLifeSeconds) {
        consoleLog(kLogError, "Already have a session code, just show it.");
        code = state.savedSessionCode;
        return SavedCode::Valid;
    }
    consoleLog(kLogError, "Session code timeout, generate a new one.");
    return SavedCode::Expired;
}

// Checks what the agent is doing before a new session is started. True when `code` already
// holds the answer.
bool answeredByCurrentSession(std::string& code) {
    ZelStatus status{};
    ZelGetStatus(0, &status);
    const SavedCode saved = status.initialized == 1 && status.state == kStateCodeIssued
                                ? checkSavedCode(code)
                                : SavedCode::None;
    bool answered = false;
    if (status.initialized != 1) {
        consoleLog(kLogError, "Zel is not initialized.");
    } else if (status.state == kStateConnected) {
        consoleLog(kLogError, "A session is already running.");
        code = "connectedAlready";
        answered = true;
    } else if (saved == SavedCode::Valid) {
        answered = true;
    } else if (saved == SavedCode::Expired) {
        {
            SessionLock lock;
            terminateUnusedSession();
        }
        clock::sleepSeconds(kPauseAfterTermSeconds);
    } else {
        consoleLog(kLogError, "Zel session state: %d \n", status.state);
    }
    ZelFreeStatus(&status);
    return answered;
}

}  // namespace

void ZelEnbleObserver::onDisconnected() {}

void ZelEnbleObserver::onChange(int32_t value) {
    if (value == kRemoteSupportOn) {
        if (StartZelSessionSupport() == 0) {
            consoleLog(kLogInfo, "Set Remote Control Enable");
        } else {
            consoleLog(kLogError, "Set Remote Control Enable failed.");
        }
    } else if (value == kRemoteSupportOff) {
        if (StopZelSessionSupport() == 0) {
            consoleLog(kLogInfo, "Set Remote Control Disable");
        } else {
            consoleLog(kLogError, "Set Remote Control Disable failed.");
        }
    }
}

void SessionCodeObserver::onDisconnected() {}

void SessionCodeObserver::onChange(const std::string& value) {
    if (value != "session0") {
        return;
    }
    consoleLog(kLogInfo, "Get Session Code by UI.");
    ZelBizClient* client = ZelBizClient::getInstance();
    // Back to a neutral value first, so that the menu's next request is again a change.
    client->setStringValue(kSessionCodeKey, "sessionDefault");
    std::string code;
    const int32_t result = RequestZelSessionCode(code);
    if (result == 1) {
        code = "serverError";
    } else if (result == 2) {
        code = "networkError";
    }
    client->setStringValue(kSessionCodeKey, code);
}

void AttachZelSessionObservers() {
    // They live as long as the process; the TV may call them at any time.
    static ZelEnbleObserver* const enableObserver = new ZelEnbleObserver;
    static SessionCodeObserver* const codeObserver = new SessionCodeObserver;
    ZelBizClient* client = ZelBizClient::getInstance();
    client->connectIntObserver(kEnableKey, enableObserver);
    client->connectStringObserver(kSessionCodeKey, codeObserver);
}

int32_t StartZelSessionSupport() {
    SessionState& state = session();
    std::shared_ptr<PollControl> previous;
    {
        SessionLock lock;
        previous.swap(state.poll);
        state.hostDownFlag = 0;
        state.stateReadyFlag = 0;
    }
    if (previous) {
        previous->requestStop();
    }
    ZelStatus status{};
    ZelGetStatus(0, &status);
    const bool sessionOver = status.state >= kStateDisconnected && status.state <= 8;
    ZelFreeStatus(&status);

    auto control = std::make_shared<PollControl>();
    {
        SessionLock lock;
        if (sessionOver) {
            state.connectedFlag = 0;
        }
        replaceCachedStatus(nullptr);
        state.poll = control;
    }
    auto* argument = new std::shared_ptr<PollControl>(control);
    pthread_t thread;
    if (_cspOsalPOSIX_pthread_create_line(&thread, nullptr, pollSessionStatus, argument,
                                          "src/ZelLinuxApp", 263) == 0) {
        pthread_detach(thread);
    } else {
        delete argument;
        SessionLock lock;
        state.poll.reset();
    }
    return 0;
}

int32_t StopZelSessionSupport() {
    ZelStatus status{};
    ZelGetStatus(0, &status);
    // Exactly these states have a session to end.
    const int32_t sessionState = status.state;
    if (status.initialized != 0 &&
        (sessionState == 0 || (sessionState >= 2 && sessionState <= kStateConnected))) {
        ZelSessionTerm();
    }
    ZelFreeStatus(&status);

    SessionState& state = session();
    std::shared_ptr<PollControl> poll;
    {
        SessionLock lock;
        poll.swap(state.poll);
    }
    // Stopped before the lock below: its sleeps are cut short, so it cannot keep the lock.
    if (poll) {
        poll->requestStop();
    }
    SessionLock lock;
    if (poll) {
        state.connectedFlag = 0;
    }
    replaceCachedStatus(nullptr);
    return 0;
}

int32_t RequestZelSessionCode(std::string& code) {
    if (BizGetLocalNetworkAvailable() == 0) {
        consoleLog(kLogError, "Network is not connect!");
        return 2;
    }
    if (answeredByCurrentSession(code)) {
        return 0;
    }
    SessionState& state = session();
    pthread_mutex_lock(&state.mutex);
    int32_t result = 0;
    const int32_t zelRet = ZelSessionInit(1);
    if (zelRet == 0) {
        consoleLog(kLogInfo, "Waiting for Session");
        std::string obtained;
        if (waitForStateReady(kCodeWaitSeconds, obtained) == 0) {
            // Accepted even when empty: the agent's answer is passed on as it is.
            consoleLog(kLogInfo, "Session Code: %s\n", obtained.c_str());
            state.savedSessionCode = obtained;
            state.savedCodeTime = clock::monotonicNow();
            pthread_mutex_unlock(&state.mutex);
            ZelBackupAQPQ();
            BizInitScreenSize();
            code = obtained;
            return 0;
        }
        consoleLog(kLogError, "Network error!");
        result = 2;
    } else if (zelRet == 1) {
        consoleLog(kLogError, "Network error, zelRet = %d", zelRet);
        result = 2;
    } else {
        consoleLog(kLogError, "Server error, zelRet = %d", zelRet);
        result = 1;
    }
    pthread_mutex_unlock(&state.mutex);
    consoleLog(kLogError, "Session Code was not obtained");
    return result;
}

int32_t WaitZelHostDown(int32_t timeoutSeconds) {
    SessionState& state = session();
    const timespec deadline = secondsFromNow(timeoutSeconds);
    SessionLock lock;
    for (;;) {
        if (state.hostDownFlag != 0) {
            state.hostDownFlag = 0;
            return 0;
        }
        const int result = timeoutSeconds > 0
                               ? clock::timedWait(&state.hostDownCond, &state.mutex, deadline)
                               : pthread_cond_wait(&state.hostDownCond, &state.mutex);
        if (result != 0) {
            state.hostDownFlag = 0;
            return 1;
        }
    }
}

int32_t SetSessionConnectStatus(int32_t value) {
    consoleLog(kLogInfo, "SetSessionConnectStatus: value=%d\n", value);
    SessionLock lock;
    session().connectedFlag = value;
    notifyTv(value == 1 ? 1 : 2);
    return 0;
}

int32_t ZelRegionQuery() {
    const std::string country = BizGetSystemCountry();
    if (country != "Usa" && country != "Canada" && country != "Mexico") {
        return 2;
    }
    if (BizGetBrand() != "Norvane") {
        return 2;
    }
    ZelStatus status{};
    ZelGetStatus(0, &status);
    int32_t result = 1;
    if (status.state == kStateUpdateAvailable) {
        consoleLog(kLogInfo, "Zel Session State is %d.\n", status.state);
        ZelCheckForSoftwareUpdate();
        result = 2;
    }
    ZelFreeStatus(&status);
    return result;
}

}  // namespace norvane
