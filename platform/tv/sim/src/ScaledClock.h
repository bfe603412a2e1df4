// Simulated monotonic time: CLOCK_MONOTONIC running `scale` times faster, continuous across
// changes of the scale. The clock can be held: time then runs on only up to the held instant and
// stays there until the hold moves on or is lifted, so that a test sees what happens at an exact
// instant. Every sleep and timed wait on this clock is on record with the instant it waits for.
#pragma once

#include <pthread.h>

#include <condition_variable>
#include <cstdint>
#include <ctime>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace tvsim {

class ScaledClock {
public:
    ScaledClock();

    // Throws std::invalid_argument unless kSlowestTimeScale <= scale <= kFastestTimeScale.
    void setScale(double scale);
    double scale() const;
    timespec now() const;
    // The real CLOCK_MONOTONIC time at which now() reaches `simulated`; an hour from now when
    // the clock is held short of it.
    timespec realTimeOf(const timespec& simulated) const;
    void sleepFor(double seconds) const;
    // pthread_cond_timedwait on a CLOCK_MONOTONIC condition variable, with `deadline` on this
    // clock: ETIMEDOUT once the simulated deadline has passed, whatever the scale or hold did
    // meanwhile. A change of the scale or hold wakes the waiter as a spurious wake-up (0).
    int timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                  const timespec& deadline) const;

    // Stops time where it is and returns that instant.
    timespec hold();
    // With time held: lets it run on at the scale up to `instant` and hold there; returns once
    // now() shows `instant`. Throws std::logic_error when time is not held and
    // std::invalid_argument when `instant` lies in the past.
    void advanceTo(const timespec& instant);
    // Time runs on from where it was held.
    void release();
    // The simulated instants that sleeps and timed waits are waiting for, earliest first.
    std::vector<timespec> pendingWakeups() const;

private:
    // All with mutex_ held.
    int64_t simulatedAt(int64_t realNanoseconds) const;
    int64_t nowAt(int64_t realNanoseconds) const;
    int64_t realTimeOfLocked(int64_t simulated) const;
    void reanchor();
    // Sleeps on changed_ until the clock shows `target`.
    void waitFor(std::unique_lock<std::mutex>& lock, int64_t target) const;
    // Wakes every sleeper and timed waiter to look at the clock again.
    void announceChange();

    mutable std::mutex mutex_;
    // Told of every new scale and hold, so that sleepers look at the clock again.
    mutable std::condition_variable changed_;
    double scale_ = 1.0;
    // The scale applies from this pair of readings on.
    int64_t realAnchor_;
    int64_t simulatedAnchor_;
    std::optional<int64_t> hold_;
    mutable std::multiset<int64_t> wakeups_;
    // The condition variables that timed waits are waiting on.
    mutable std::multiset<pthread_cond_t*> waitingConditions_;
};

}  // namespace tvsim
