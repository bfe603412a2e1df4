#include "FramePump.h"

#include <algorithm>

#include "Screen.h"

namespace agentsim::console {
namespace {

// A page that stopped asking for this long no longer counts as watching.
constexpr auto kWatchingFor = std::chrono::seconds(2);
// How long a frame request waits for a newer frame before it is answered with none.
constexpr auto kPatience = std::chrono::seconds(2);
constexpr size_t kHistoryFrames = 64;

}  // namespace

bool captureFrame(const PluginEntryPoints& plugin, Frame& frame) {
    const int32_t width = plugin.getVideoWidth();
    const int32_t height = plugin.getVideoHeight();
    const size_t bytes = frameBytesOf(width, height);
    if (bytes == 0) {
        return false;
    }
    frame.width = width;
    frame.height = height;
    frame.rgba.resize(bytes);
    if (plugin.fillVideoBuffer(frame.rgba.data(), static_cast<uint32_t>(frame.rgba.size())) != 0) {
        return false;
    }
    frame.tiles = std::make_shared<const TileHashes>(hashTiles(frame.rgba.data(), width, height));
    return true;
}

FramePump::FramePump(const PluginEntryPoints& plugin) : plugin_(plugin) {}

FramePump::~FramePump() {
    stop();
}

void FramePump::start() {
    thread_ = std::thread([this] { run(); });
}

void FramePump::stop() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
    std::vector<Waiter> waiters;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        waiters.swap(waiters_);
    }
    for (Waiter& waiter : waiters) {
        waiter.answer(encodeNoChange(waiter.have, counters()));
    }
}

void FramePump::request(uint64_t have, int rate, FrameAnswer answer) {
    const Clock::time_point now = Clock::now();
    Payload payload;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        askedAt_[std::clamp(rate, kMinFrameRate, kMaxFrameRate)] = now;
        if (stopping_ || !latest_ || latest_->seq == have) {
            if (!stopping_) {
                waiters_.push_back({have, std::move(answer), now + kPatience});
                changed_.notify_all();
                return;
            }
            payload = encodeNoChange(have, countersLocked(now));
        } else {
            payload = answerFor(have, now);
        }
    }
    answer(std::move(payload));
}

FrameCounters FramePump::counters() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return countersLocked(Clock::now());
}

FrameCounters FramePump::countersLocked(Clock::time_point now) const {
    return {fills_, frames_, misses_, rateLocked(now)};
}

int FramePump::rateLocked(Clock::time_point now) const {
    for (int rate = kMaxFrameRate; rate >= kMinFrameRate; --rate) {
        if (askedAt_[rate] != Clock::time_point{} && now - askedAt_[rate] < kWatchingFor) {
            return rate;
        }
    }
    return 0;
}

Payload FramePump::answerFor(uint64_t have, Clock::time_point now) const {
    const TileHashes* base = nullptr;
    for (const auto& [seq, tiles] : history_) {
        if (seq == have) {
            base = tiles.get();
        }
    }
    return encodeFrame(latest_, base, countersLocked(now));
}

std::shared_ptr<Frame> FramePump::bufferForNextFrame() {
    std::lock_guard<std::mutex> lock(mutex_);
    // A frame still being sent to a page is left alone; then the next frame gets a new buffer.
    if (retired_ && retired_.use_count() == 1) {
        return std::move(retired_);
    }
    return std::make_shared<Frame>();
}

void FramePump::publishLocked(std::shared_ptr<Frame> frame, std::vector<Answer>& answers) {
    frame->seq = nextSeq_++;
    history_.emplace_back(frame->seq, frame->tiles);
    if (history_.size() > kHistoryFrames) {
        history_.pop_front();
    }
    // Only the pump changes frames; once published a frame is read-only.
    retired_ = std::const_pointer_cast<Frame>(std::exchange(latest_, std::move(frame)));
    const Clock::time_point now = Clock::now();
    for (Waiter& waiter : waiters_) {
        answers.push_back({std::move(waiter.answer), answerFor(waiter.have, now)});
    }
    waiters_.clear();
}

void FramePump::expireLocked(Clock::time_point now, std::vector<Answer>& answers) {
    const auto expired = std::stable_partition(waiters_.begin(), waiters_.end(),
                                               [&](const Waiter& w) { return w.deadline > now; });
    for (auto waiter = expired; waiter != waiters_.end(); ++waiter) {
        answers.push_back(
            {std::move(waiter->answer), encodeNoChange(waiter->have, countersLocked(now))});
    }
    waiters_.erase(expired, waiters_.end());
}

FramePump::Clock::time_point FramePump::wakeTimeLocked(Clock::time_point now) const {
    Clock::time_point wake = now + kWatchingFor;
    for (const Waiter& waiter : waiters_) {
        wake = std::min(wake, waiter.deadline);
    }
    if (rateLocked(now) > 0) {
        wake = std::min(wake, nextFill_);
    }
    return wake;
}

void FramePump::run() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stopping_) {
        std::vector<Answer> answers;
        Clock::time_point now = Clock::now();
        expireLocked(now, answers);
        const int rate = rateLocked(now);
        if (answers.empty() && (rate == 0 || now < nextFill_)) {
            changed_.wait_until(lock, wakeTimeLocked(now));
            continue;
        }
        if (rate > 0 && now >= nextFill_) {
            const auto period = std::chrono::duration_cast<Clock::duration>(
                std::chrono::duration<double>(1.0 / rate));
            // A late fill does not make the next ones come in a burst.
            nextFill_ = std::max(nextFill_ + period, now);
            lock.unlock();
            std::shared_ptr<Frame> frame = bufferForNextFrame();
            const bool delivered = captureFrame(plugin_, *frame);
            lock.lock();
            ++fills_;
            ++(delivered ? frames_ : misses_);
            if (delivered) {
                publishLocked(std::move(frame), answers);
            } else {
                retired_ = std::move(frame);
            }
        }
        lock.unlock();
        for (Answer& answer : answers) {
            answer.answer(std::move(answer.payload));
        }
        lock.lock();
    }
}

}  // namespace agentsim::console
