// Simulated monotonic time: CLOCK_MONOTONIC running `scale` times faster, continuous across
// changes of the scale.
#pragma once

#include <cstdint>
#include <ctime>
#include <mutex>

namespace tvsim {

class ScaledClock {
public:
    ScaledClock();

    // Throws std::invalid_argument unless kSlowestTimeScale <= scale <= kFastestTimeScale.
    void setScale(double scale);
    double scale() const;
    timespec now() const;
    // The real CLOCK_MONOTONIC time at which now() reaches `simulated`.
    timespec realTimeOf(const timespec& simulated) const;
    void sleepFor(double seconds) const;

private:
    int64_t simulatedAt(int64_t realNanoseconds) const;  // with mutex_ held

    mutable std::mutex mutex_;
    double scale_ = 1.0;
    // The scale applies from this pair of readings on.
    int64_t realAnchor_;
    int64_t simulatedAnchor_;
};

}  // namespace tvsim
