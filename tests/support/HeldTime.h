// Simulated time held by a test, so that what the plug-in does at an exact instant can be seen:
// time stands still between the test's steps and runs on only as far as the test lets it.
// Instants are seconds after the moment the hold began.
#pragma once

#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "support/Eventually.h"

namespace testing_support {

class HeldTime {
public:
    HeldTime();
    // Lets time run again, then waits for the calls still running in the background.
    ~HeldTime();
    HeldTime(const HeldTime&) = delete;
    HeldTime& operator=(const HeldTime&) = delete;

    timespec instant(double seconds) const;
    // Seconds since the hold began.
    double now() const;
    // Lets time run on at the TV's scale up to `seconds` and holds it there.
    void advanceTo(double seconds);
    // How many sleeps and timed waits are waiting for `seconds`.
    size_t wakeupsPendingAt(double seconds) const;
    // Whether at least `count` come to wait for `seconds` within ~5 s of real time.
    bool awaitWakeupAt(double seconds, size_t count = 1) const;

    // Runs `call` on a thread of its own, for calls that sleep or wait on held time.
    template <typename Call>
    auto inBackground(Call call) -> std::future<decltype(call())> {
        auto task = std::make_shared<std::packaged_task<decltype(call())()>>(std::move(call));
        auto result = task->get_future();
        threads_.emplace_back([task] { (*task)(); });
        return result;
    }

private:
    timespec start_;
    std::vector<std::thread> threads_;
};

// The result of a background call, once it is there within ~5 s of real time.
template <typename Result>
bool finishes(std::future<Result>& result) {
    return result.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
}

template <typename Result>
bool finished(std::future<Result>& result) {
    return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace testing_support
