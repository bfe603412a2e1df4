// The settings service's own thread: delivers observer notifications one at a time, in the order
// they were posted, with no lock of the store held (observers call back into the store).
#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tvsim {

class Dispatcher {
public:
    using Delivery = std::function<void()>;

    Dispatcher() = default;
    ~Dispatcher();
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    // Queues a delivery; `channel` names its observer registration so it can be discarded.
    // The thread starts with the first delivery.
    void post(uint64_t channel, Delivery delivery);
    // Drops the queued deliveries of one channel, or of all; one already running completes.
    void discard(uint64_t channel);
    void discardAll();

    // Returns once the dispatcher is idle: everything posted before the call has been delivered,
    // a delivery still running included, and so has whatever those deliveries posted in turn
    // (an observer that changes an observed setting). Called from a delivery (the dispatcher's
    // own thread) it returns at once: everything posted before the running delivery is delivered
    // already, and what that delivery posts can only run after it returns.
    void waitUntilDelivered();

    // Drops what is queued, lets a running delivery finish and ends the thread; later posts are
    // dropped. Safe to call more than once and from the dispatcher's own thread.
    void shutdown();

private:
    struct Item {
        uint64_t channel;
        Delivery delivery;
    };

    void run();
    void startLocked();
    bool onOwnThread() const;

    std::mutex mutex_;
    std::condition_variable work_;
    std::condition_variable progress_;
    std::deque<Item> queue_;
    bool running_ = false;  // a delivery is in progress
    bool stopping_ = false;
    std::thread thread_;
    pid_t owner_ = 0;  // a forked child inherits the object but not the thread
};

}  // namespace tvsim
