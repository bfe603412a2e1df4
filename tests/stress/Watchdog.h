// Ends the test process when a stress run outlives its limit. A deadlocked run cannot be joined
// or reported by the test itself, so the watchdog prints where each thread was and exits with a
// failure status instead of letting the test runner wait for its own, later time-out.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace stress {

class Watchdog {
public:
    // `report` describes the run's progress; it is called from the watchdog's thread.
    Watchdog(std::chrono::seconds limit, std::function<std::string()> report)
        : report_(std::move(report)), thread_([this, limit] { watch(limit); }) {}

    ~Watchdog() {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            finished_ = true;
        }
        done_.notify_all();
        thread_.join();
    }

    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    void watch(std::chrono::seconds limit) {
        std::unique_lock<std::mutex> lock(mutex_);
        if (done_.wait_for(lock, limit, [this] { return finished_; })) {
            return;
        }
        std::fprintf(stderr, "watchdog: the stress run is still going after %lld s\n%s\n",
                     static_cast<long long>(limit.count()), report_().c_str());
        std::fflush(stderr);
        std::_Exit(EXIT_FAILURE);
    }

    std::function<std::string()> report_;
    std::mutex mutex_;
    std::condition_variable done_;
    bool finished_ = false;
    std::thread thread_;  // last: started once the members it uses exist
};

}  // namespace stress
