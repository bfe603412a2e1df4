#include "ScaledClock.h"

#include <cerrno>
#include <cmath>
#include <stdexcept>

namespace tvsim {
namespace {

constexpr int64_t kNanosecondsPerSecond = 1000000000;

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
    if (!std::isfinite(scale) || scale <= 0) {
        throw std::invalid_argument("time scale must be positive");
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
    const long double simulatedSpan = nanosecondsOf(simulated) - simulatedAnchor_;
    return timespecOf(realAnchor_ + static_cast<int64_t>(std::ceil(simulatedSpan / scale_)));
}

void ScaledClock::sleepFor(double seconds) const {
    if (!(seconds > 0)) {
        return;
    }
    const timespec start = now();
    const int64_t target =
        nanosecondsOf(start) + static_cast<int64_t>(std::ceil(seconds * kNanosecondsPerSecond));
    // Rounding may wake us a nanosecond early in simulated terms; sleep on until it has passed.
    while (nanosecondsOf(now()) < target) {
        sleepUntilReal(nanosecondsOf(realTimeOf(timespecOf(target))));
    }
}

int64_t ScaledClock::simulatedAt(int64_t realNanoseconds) const {
    const long double realSpan = realNanoseconds - realAnchor_;
    return simulatedAnchor_ + static_cast<int64_t>(std::floor(realSpan * scale_));
}

}  // namespace tvsim
