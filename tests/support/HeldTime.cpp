#include "support/HeldTime.h"

#include <cmath>
#include <cstdint>

#include "tvsim/TvSim.h"

namespace testing_support {
namespace {

constexpr int64_t kNanosecondsPerSecond = 1000000000;
// Instants are compared to a microsecond: closer than any edge of the plug-in.
constexpr int64_t kToleranceNanoseconds = 1000;

int64_t nanosecondsOf(const timespec& time) {
    return static_cast<int64_t>(time.tv_sec) * kNanosecondsPerSecond + time.tv_nsec;
}

tvsim::Tv& tv() {
    return tvsim::Tv::instance();
}

}  // namespace

HeldTime::HeldTime() : start_(tv().holdTime()) {}

HeldTime::~HeldTime() {
    tv().releaseTime();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

timespec HeldTime::instant(double seconds) const {
    const int64_t at = nanosecondsOf(start_) + std::llround(seconds * kNanosecondsPerSecond);
    timespec time{};
    time.tv_sec = static_cast<time_t>(at / kNanosecondsPerSecond);
    time.tv_nsec = static_cast<long>(at % kNanosecondsPerSecond);
    return time;
}

double HeldTime::now() const {
    return static_cast<double>(nanosecondsOf(tv().monotonicNow()) - nanosecondsOf(start_)) /
           kNanosecondsPerSecond;
}

void HeldTime::advanceTo(double seconds) {
    tv().advanceTimeTo(instant(seconds));
}

size_t HeldTime::wakeupsPendingAt(double seconds) const {
    const int64_t wanted = nanosecondsOf(instant(seconds));
    size_t count = 0;
    for (const timespec& wakeup : tv().pendingWakeups()) {
        if (std::llabs(nanosecondsOf(wakeup) - wanted) <= kToleranceNanoseconds) {
            ++count;
        }
    }
    return count;
}

bool HeldTime::awaitWakeupAt(double seconds, size_t count) const {
    return eventually([&] { return wakeupsPendingAt(seconds) >= count; });
}

}  // namespace testing_support
