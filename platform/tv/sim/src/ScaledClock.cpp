#include "ScaledClock.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "tvsim/TvSim.h"

namespace tvsim {
namespace {

constexpr int64_t kNanosecondsPerSecond = 1000000000;
// What "never" becomes while the clock is held short of an instant; a sleeper is woken by the
// next change of the clock long before.
constexpr int64_t kFarAheadNanoseconds = 3600 * kNanosecondsPerSecond;
// A timed waiter is woken when the scale or the hold changes, but it may be just about to wait
// then and miss it; it looks at the clock again after at most this much real time.
constexpr int64_t kWaitSliceNanoseconds = 10000000;

// Nanoseconds computed in floating point, held to what int64_t takes: a clock that runs out
// stops at its end instead of wrapping.
int64_t saturated(long double nanoseconds) {
    constexpr long double kMost = static_cast<long double>(std::numeric_limits<int64_t>::max());
    if (!(nanoseconds < kMost)) {
        return std::numeric_limits<int64_t>::max();
    }
    if (!(nanoseconds > -kMost)) {
        return -std::numeric_limits<int64_t>::max();
    }
    return static_cast<int64_t>(nanoseconds);
}

int64_t nanosecondsOf(const timespec& time) {
    return static_cast<int64_t>(time.tv_sec) * kNanosecondsPerSecond + time.tv_nsec;
}

timespec timespecOf(int64_t nanoseconds) {
    if (nanoseconds < 0) {
        nanoseconds = 0;
    }
    timespec time{};
    time.tv_sec = static_cast<time_t>(nanoseconds / kNanosecondsPerSecond);
    time.tv_nsec = static_cast<long>(nanoseconds % kNanosecondsPerSecond);
    return time;
}

int64_t realNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return nanosecondsOf(now);
}

// steady_clock reads CLOCK_MONOTONIC, the clock of the real readings here.
std::chrono::steady_clock::time_point steadyTimeOf(int64_t realNanoseconds) {
    return std::chrono::steady_clock::time_point(std::chrono::nanoseconds(realNanoseconds));
}

}  // namespace

ScaledClock::ScaledClock() : realAnchor_(realNow()), simulatedAnchor_(realAnchor_) {}

void ScaledClock::setScale(double scale) {
    if (!(scale >= kSlowestTimeScale && scale <= kFastestTimeScale)) {
        throw std::invalid_argument("time scale " + std::to_string(scale) + " is not from " +
                                    std::to_string(kSlowestTimeScale) + " to " +
                                    std::to_string(kFastestTimeScale));
    }
    std::lock_guard<std::mutex> lock(mutex_);
    reanchor();
    scale_ = scale;
    announceChange();
}

double ScaledClock::scale() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return scale_;
}

timespec ScaledClock::now() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return timespecOf(nowAt(realNow()));
}

timespec ScaledClock::realTimeOf(const timespec& simulated) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return timespecOf(realTimeOfLocked(nanosecondsOf(simulated)));
}

void ScaledClock::sleepFor(double seconds) const {
    if (!(seconds > 0)) {
        return;
    }
    std::unique_lock<std::mutex> lock(mutex_);
    const int64_t target =
        saturated(nowAt(realNow()) +
                  std::ceil(static_cast<long double>(seconds) * kNanosecondsPerSecond));
    const auto wakeup = wakeups_.insert(target);
    waitFor(lock, target);
    wakeups_.erase(wakeup);
}

int ScaledClock::timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                           const timespec& deadline) const {
    const int64_t target = nanosecondsOf(deadline);
    std::unique_lock<std::mutex> lock(mutex_);
    const auto wakeup = wakeups_.insert(target);
    const auto waiting = waitingConditions_.insert(condition);
    int result = ETIMEDOUT;
    for (int64_t real = realNow(); nowAt(real) < target; real = realNow()) {
        const timespec until =
            timespecOf(std::min(realTimeOfLocked(target), real + kWaitSliceNanoseconds));
        lock.unlock();
        result = pthread_cond_timedwait(condition, mutex, &until);
        lock.lock();
        if (result != ETIMEDOUT) {
            break;
        }
    }
    waitingConditions_.erase(waiting);
    wakeups_.erase(wakeup);
    return result;
}

timespec ScaledClock::hold() {
    std::lock_guard<std::mutex> lock(mutex_);
    reanchor();
    hold_ = simulatedAnchor_;
    return timespecOf(*hold_);
}

void ScaledClock::advanceTo(const timespec& instant) {
    const int64_t target = nanosecondsOf(instant);
    std::unique_lock<std::mutex> lock(mutex_);
    if (!hold_) {
        throw std::logic_error("simulated time is not held");
    }
    reanchor();
    if (target < simulatedAnchor_) {
        throw std::invalid_argument("simulated time cannot go back");
    }
    hold_ = target;
    announceChange();
    waitFor(lock, target);
}

void ScaledClock::release() {
    std::lock_guard<std::mutex> lock(mutex_);
    reanchor();
    hold_.reset();
    announceChange();
}

std::vector<timespec> ScaledClock::pendingWakeups() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<timespec> instants;
    for (int64_t wakeup : wakeups_) {
        instants.push_back(timespecOf(wakeup));
    }
    return instants;
}

int64_t ScaledClock::simulatedAt(int64_t realNanoseconds) const {
    const long double realSpan = realNanoseconds - realAnchor_;
    return saturated(simulatedAnchor_ + std::floor(realSpan * scale_));
}

int64_t ScaledClock::nowAt(int64_t realNanoseconds) const {
    const int64_t simulated = simulatedAt(realNanoseconds);
    return hold_ ? std::min(simulated, *hold_) : simulated;
}

int64_t ScaledClock::realTimeOfLocked(int64_t simulated) const {
    if (hold_ && simulated > *hold_) {
        return realNow() + kFarAheadNanoseconds;
    }
    const long double simulatedSpan = static_cast<long double>(simulated) - simulatedAnchor_;
    return saturated(realAnchor_ + std::ceil(simulatedSpan / scale_));
}

// Continues from the clock's present reading, so that a new scale or hold takes effect from now.
void ScaledClock::reanchor() {
    const int64_t real = realNow();
    simulatedAnchor_ = nowAt(real);
    realAnchor_ = real;
}

void ScaledClock::waitFor(std::unique_lock<std::mutex>& lock, int64_t target) const {
    // Rounding may wake us a nanosecond early in simulated terms; sleep on until it has passed.
    while (nowAt(realNow()) < target) {
        changed_.wait_until(lock, steadyTimeOf(realTimeOfLocked(target)));
    }
}

// The waiters' own mutexes are not taken here: a woken waiter finds the clock changed, or
// takes the wake-up as a spurious one.
void ScaledClock::announceChange() {
    changed_.notify_all();
    for (pthread_cond_t* condition : waitingConditions_) {
        pthread_cond_broadcast(condition);
    }
}

}  // namespace tvsim
