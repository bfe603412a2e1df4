#include "Dispatcher.h"

#include <unistd.h>

#include <algorithm>

namespace tvsim {

Dispatcher::~Dispatcher() {
    shutdown();
    if (thread_.joinable()) {
        thread_.detach();
    }
}

void Dispatcher::post(uint64_t channel, Delivery delivery) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (stopping_) {
        return;
    }
    startLocked();
    queue_.push_back(Item{channel, std::move(delivery)});
    work_.notify_one();
}

void Dispatcher::discard(uint64_t channel) {
    std::lock_guard<std::mutex> lock(mutex_);
    queue_.erase(std::remove_if(queue_.begin(), queue_.end(),
                                [channel](const Item& item) { return item.channel == channel; }),
                 queue_.end());
    progress_.notify_all();
}

void Dispatcher::discardAll() {
    std::lock_guard<std::mutex> lock(mutex_);
    queue_.clear();
    progress_.notify_all();
}

void Dispatcher::waitUntilDelivered() {
    std::unique_lock<std::mutex> lock(mutex_);
    if (onOwnThread()) {
        return;
    }
    progress_.wait(lock, [this] { return stopping_ || (queue_.empty() && !running_); });
}

void Dispatcher::shutdown() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (stopping_) {
            return;
        }
        stopping_ = true;
        queue_.clear();
        work_.notify_all();
        progress_.notify_all();
        if (onOwnThread() || owner_ != getpid()) {
            return;
        }
    }
    // No one starts or replaces the thread once stopping_ is set.
    if (thread_.joinable()) {
        thread_.join();
    }
}

void Dispatcher::run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        work_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
        if (stopping_) {
            return;
        }
        Item item = std::move(queue_.front());
        queue_.pop_front();
        running_ = true;
        lock.unlock();
        try {
            item.delivery();
        } catch (...) {
            // An observer that throws must not take the service down with it.
        }
        item.delivery = nullptr;
        lock.lock();
        running_ = false;
        progress_.notify_all();
    }
}

void Dispatcher::startLocked() {
    if (thread_.joinable()) {
        return;
    }
    owner_ = getpid();
    thread_ = std::thread(&Dispatcher::run, this);
}

bool Dispatcher::onOwnThread() const {
    return std::this_thread::get_id() == thread_.get_id();
}

}  // namespace tvsim
