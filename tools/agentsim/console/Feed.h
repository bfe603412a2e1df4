// The live feed: what the TV, the plug-in and the agent report, in the order it arrived, streamed
// to every page as server-sent events. Entries are kept in two rings of bounded size, one for the
// frame route's own entries (several for every frame) and one for everything else, so that a
// running screen never pushes the rest out. The feed also carries the latest state snapshot, sent
// whenever it changes.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "HttpTypes.h"

namespace agentsim::console {

struct FeedEntry {
    uint64_t seq = 0;    // order of arrival, over both rings
    double time = 0;     // seconds since the feed started
    std::string source;  // "tv", "frame", "plugin", "agent", "host" or "console"
    std::string text;
};

struct FeedLimits {
    size_t entries = 5000;      // kept, besides the frame route's
    size_t frameEntries = 500;  // the frame route's entries kept
    size_t textBytes = 4096;    // an entry's text is cut here
};

class Feed : public std::enable_shared_from_this<Feed> {
public:
    explicit Feed(FeedLimits limits = {});

    void add(const std::string& source, const std::string& text);
    void add(const std::vector<std::pair<std::string, std::string>>& entries);
    // Replaces the state snapshot (a JSON text); a snapshot equal to the last one is not sent.
    void setState(const std::string& stateJson);

    // A stream that begins with the state and every entry still kept.
    std::shared_ptr<EventStream> subscribe();

    // The entries kept, in order of arrival.
    std::vector<FeedEntry> entries() const;

private:
    class Subscription;
    struct Ring {
        std::deque<std::pair<uint64_t, FeedEntry>> entries;  // with their number in the ring
        uint64_t added = 0;
        size_t capacity = 0;
    };
    struct Cursor {
        uint64_t id = 0;
        std::array<uint64_t, 2> sent{};  // per ring, the number of the last entry sent
        uint64_t stateSeen = 0;
        bool started = false;  // a new subscription begins at the oldest entry kept
    };
    std::string takeEvents(Cursor& cursor, std::function<void()> wake);
    void forgetWaiter(uint64_t subscription);
    void wakeWaiters(std::unique_lock<std::mutex>& lock);

    const size_t maxTextBytes_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    mutable std::mutex mutex_;
    std::array<Ring, 2> rings_;
    uint64_t nextSeq_ = 1;
    std::string state_ = "{}";
    uint64_t stateVersion_ = 0;
    uint64_t nextSubscription_ = 1;
    // One waiting wake call per subscription: a later one replaces it.
    std::map<uint64_t, std::function<void()>> waiters_;
};

// The text cut to at most `limit` bytes at a character boundary, marked when cut.
std::string clipText(const std::string& text, size_t limit);

}  // namespace agentsim::console
