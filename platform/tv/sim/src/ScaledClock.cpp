#include "ScaledClock.h"

#include <cerrno>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "tvsim/TvSim.h"

namespace tvsim {
namespace {

constexpr int64_t kNanosecondsPerSecond = 1000000000;

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

void sleepUntilReal(int64_t deadline) {
    const timespec until = timespecOf(deadline);
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
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
    const int64_t real = realNow();
    simulatedAnchor_ = simulatedAt(real);
    realAnchor_ = real;
    scale_ = scale;
}

double ScaledClock::scale() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return scale_;
}

timespec ScaledClock::now() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return timespecOf(simulatedAt(realNow()));
}

timespec ScaledClock::realTimeOf(const timespec& simulated) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const long double simulatedSpan =
        static_cast<long double>(nanosecondsOf(simulated)) - simulatedAnchor_;
    return timespecOf(saturated(realAnchor_ + std::ceil(simulatedSpan / scale_)));
}

void ScaledClock::sleepFor(double seconds) const {
    if (!(seconds > 0)) {
        return;
    }
    const timespec start = now();
    const int64_t target =
        saturated(nanosecondsOf(start) +
                  std::ceil(static_cast<long double>(seconds) * kNanosecondsPerSecond));
    // Rounding may wake us a nanosecond early in simulated terms; sleep on until it has passed.
    while (nanosecondsOf(now()) < target) {
        sleepUntilReal(nanosecondsOf(realTimeOf(timespecOf(target))));
    }
}

int64_t ScaledClock::simulatedAt(int64_t realNanoseconds) const {
    const long double realSpan = realNanoseconds - realAnchor_;
    return saturated(simulatedAnchor_ + std::floor(realSpan * scale_));
}

}  // namespace tvsim
