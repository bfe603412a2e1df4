// The simulated clock held by a test: time stands still, moves to exact instants, and every
// sleep and timed wait on it shows the instant it waits for.
#include <gmock/gmock.h>
#include <pthread.h>

#include <cerrno>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

#include "TvTestSupport.h"
#include "support/HeldTime.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::finished;
using testing_support::finishes;
using testing_support::HeldTime;

int64_t nanoseconds(const timespec& time) {
    return static_cast<int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

// A flag awaited as the plug-in awaits its conditions: on a condition variable that uses
// CLOCK_MONOTONIC, taking any other wake-up as a spurious one.
struct MonotonicCondition {
    MonotonicCondition() {
        pthread_condattr_t attributes;
        pthread_condattr_init(&attributes);
        pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
        pthread_cond_init(&condition, &attributes);
        pthread_condattr_destroy(&attributes);
        pthread_mutex_init(&mutex, nullptr);
    }
    ~MonotonicCondition() {
        pthread_cond_destroy(&condition);
        pthread_mutex_destroy(&mutex);
    }
    // 0 once signalled, ETIMEDOUT when the deadline passed first.
    int waitUntil(const timespec& deadline) {
        pthread_mutex_lock(&mutex);
        int result = 0;
        while (!signalled && result != ETIMEDOUT) {
            result = tvsim::Tv::instance().timedWait(&condition, &mutex, deadline);
        }
        result = signalled ? 0 : result;
        pthread_mutex_unlock(&mutex);
        return result;
    }
    void signal() {
        pthread_mutex_lock(&mutex);
        signalled = true;
        pthread_cond_signal(&condition);
        pthread_mutex_unlock(&mutex);
    }

    pthread_cond_t condition;
    pthread_mutex_t mutex;
    bool signalled = false;
};

class TvHeldClock : public tvtest::TvTest {
protected:
    void SetUp() override { tv().setTimeScale(1000); }
};

TEST_F(TvHeldClock, StandsStillAndMovesToExactInstants) {
    HeldTime time;
    const int64_t start = nanoseconds(time.instant(0));
    EXPECT_EQ(nanoseconds(tv().monotonicNow()), start);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));  // 20 s at this scale
    EXPECT_EQ(nanoseconds(tv().monotonicNow()), start);
    time.advanceTo(5.5);
    EXPECT_EQ(nanoseconds(tv().monotonicNow()), start + 5500000000);
    EXPECT_THROW(time.advanceTo(5), std::invalid_argument);
    tv().setTimeScale(1);
    tv().releaseTime();
    EXPECT_TRUE(testing_support::eventually(
        [&] { return nanoseconds(tv().monotonicNow()) > start + 5500000000; }));
    EXPECT_LT(nanoseconds(tv().monotonicNow()), start + 6500000000) << "on from where it stood";
    EXPECT_THROW(tv().advanceTimeTo(time.instant(100)), std::logic_error) << "not held";
}

TEST_F(TvHeldClock, ASleepEndsAtItsInstantAndIsPendingUntilThen) {
    HeldTime time;
    std::future<void> sleeper = time.inBackground([this] { tv().sleepFor(2); });
    ASSERT_TRUE(time.awaitWakeupAt(2));
    EXPECT_THAT(tv().pendingWakeups(), ElementsAre(testing::_));
    time.advanceTo(1.999);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(finished(sleeper));
    time.advanceTo(2);
    EXPECT_TRUE(finishes(sleeper));
    EXPECT_THAT(tv().pendingWakeups(), IsEmpty());
}

TEST_F(TvHeldClock, ATimedWaitEndsAtItsDeadlineOrWhenSignalled) {
    HeldTime time;
    MonotonicCondition condition;
    std::future<int> timed =
        time.inBackground([&] { return condition.waitUntil(time.instant(1)); });
    ASSERT_TRUE(time.awaitWakeupAt(1));
    time.advanceTo(0.999);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(finished(timed));
    time.advanceTo(1);
    ASSERT_TRUE(finishes(timed));
    EXPECT_EQ(timed.get(), ETIMEDOUT);

    std::future<int> signalled =
        time.inBackground([&] { return condition.waitUntil(time.instant(2)); });
    ASSERT_TRUE(time.awaitWakeupAt(2));
    condition.signal();
    ASSERT_TRUE(finishes(signalled));
    EXPECT_EQ(signalled.get(), 0);
    EXPECT_THAT(tv().pendingWakeups(), IsEmpty());
}

TEST_F(TvHeldClock, SleepsAndWaitsFollowAFasterScale) {
    tv().setTimeScale(1);
    MonotonicCondition condition;
    timespec deadline = tv().monotonicNow();
    deadline.tv_sec += 100;
    std::future<int> waiting =
        std::async(std::launch::async, [&] { return condition.waitUntil(deadline); });
    std::future<void> sleeping = std::async(std::launch::async, [this] { tv().sleepFor(100); });
    ASSERT_TRUE(testing_support::eventually([this] { return tv().pendingWakeups().size() == 2; }));
    tv().setTimeScale(10000);  // 100 s pass in 10 ms
    EXPECT_TRUE(finishes(sleeping));
    ASSERT_TRUE(finishes(waiting));
    EXPECT_EQ(waiting.get(), ETIMEDOUT);
}

}  // namespace
