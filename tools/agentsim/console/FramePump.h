// The console's frame route: one thread asks the plug-in for frames through fillVideoBufferExt,
// as the agent's remote view does, at the highest rate a watching page asked for, and answers
// the pages' frame requests as frames come in. Nobody watching, no frames asked for.
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "FrameCodec.h"
#include "Plugin.h"

namespace agentsim::console {

constexpr int kMinFrameRate = 1;
constexpr int kMaxFrameRate = 10;

// Asks the plug-in for one frame into `frame` (sized to the plug-in's video size) and hashes its
// tiles; false when the plug-in delivered none.
bool captureFrame(const PluginEntryPoints& plugin, Frame& frame);

class FramePump {
public:
    using FrameAnswer = std::function<void(Payload)>;
    using Clock = std::chrono::steady_clock;

    explicit FramePump(const PluginEntryPoints& plugin);
    ~FramePump();
    FramePump(const FramePump&) = delete;
    FramePump& operator=(const FramePump&) = delete;

    void start();
    void stop();

    // Answers with the newest frame when the page's (`have`, 0 for none) is older; otherwise
    // with the next one, or with no change after a while. `rate` (frames per second, clamped to
    // 1..10) is what this page wants; the pump runs at the highest rate asked for lately.
    void request(uint64_t have, int rate, FrameAnswer answer);
    FrameCounters counters() const;

private:
    struct Waiter {
        uint64_t have;
        FrameAnswer answer;
        Clock::time_point deadline;
    };
    struct Answer {
        FrameAnswer answer;
        Payload payload;
    };

    void run();
    int rateLocked(Clock::time_point now) const;
    FrameCounters countersLocked(Clock::time_point now) const;
    std::shared_ptr<Frame> bufferForNextFrame();
    void publishLocked(std::shared_ptr<Frame> frame, std::vector<Answer>& answers);
    Payload answerFor(uint64_t have, Clock::time_point now) const;
    void expireLocked(Clock::time_point now, std::vector<Answer>& answers);
    Clock::time_point wakeTimeLocked(Clock::time_point now) const;

    const PluginEntryPoints plugin_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::thread thread_;
    bool stopping_ = false;
    std::vector<Waiter> waiters_;
    std::array<Clock::time_point, kMaxFrameRate + 1> askedAt_{};  // the last request per rate
    Clock::time_point nextFill_{};
    uint64_t fills_ = 0;
    uint64_t frames_ = 0;
    uint64_t misses_ = 0;
    uint64_t nextSeq_ = 1;
    std::shared_ptr<const Frame> latest_;
    std::shared_ptr<Frame> retired_;  // the frame before latest_, reused once nobody sends it
    // Tiles of recent frames, oldest first, so that a slower page still gets only the changes.
    std::deque<std::pair<uint64_t, std::shared_ptr<const TileHashes>>> history_;
};

}  // namespace agentsim::console
