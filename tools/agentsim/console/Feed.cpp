#include "Feed.h"

#include <json/value.h>

#include <algorithm>

#include "JsonText.h"

namespace agentsim::console {
namespace {

// Entries sent in one write, so that a page that catches up still gets its events in pieces.
constexpr size_t kEntriesPerChunk = 256;
constexpr size_t kFrameRing = 1;

size_t ringOf(const std::string& source) {
    return source == "frame" ? kFrameRing : 0;
}

std::string event(const char* name, const std::string& data) {
    return std::string("event: ") + name + "\ndata: " + data + "\n\n";
}

std::string entryJson(const FeedEntry& entry) {
    Json::Value json(Json::objectValue);
    json["seq"] = Json::Value::UInt64(entry.seq);
    json["t"] = entry.time;
    json["source"] = entry.source;
    json["text"] = entry.text;
    return simjson::compact(json);
}

}  // namespace

class Feed::Subscription : public EventStream {
public:
    Subscription(std::shared_ptr<Feed> feed, uint64_t id) : feed_(std::move(feed)) {
        cursor_.id = id;
    }

    // A page that left leaves no wake call behind.
    ~Subscription() override { feed_->forgetWaiter(cursor_.id); }

    std::string next(std::function<void()> wake) override {
        return feed_->takeEvents(cursor_, std::move(wake));
    }

private:
    std::shared_ptr<Feed> feed_;
    Cursor cursor_;
};

std::string clipText(const std::string& text, size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return text.substr(0, end) + " [cut: " + std::to_string(text.size()) + " bytes]";
}

Feed::Feed(FeedLimits limits) : maxTextBytes_(limits.textBytes) {
    rings_[0].capacity = limits.entries;
    rings_[kFrameRing].capacity = limits.frameEntries;
}

void Feed::add(const std::string& source, const std::string& text) {
    add({{source, text}});
}

void Feed::add(const std::vector<std::pair<std::string, std::string>>& entries) {
    if (entries.empty()) {
        return;
    }
    std::unique_lock<std::mutex> lock(mutex_);
    const double now =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    for (const auto& [source, text] : entries) {
        Ring& ring = rings_[ringOf(source)];
        ring.entries.emplace_back(
            ++ring.added, FeedEntry{nextSeq_++, now, source, clipText(text, maxTextBytes_)});
        if (ring.entries.size() > ring.capacity) {
            ring.entries.pop_front();
        }
    }
    wakeWaiters(lock);
}

void Feed::setState(const std::string& stateJson) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (stateJson == state_) {
        return;
    }
    state_ = stateJson;
    ++stateVersion_;
    wakeWaiters(lock);
}

void Feed::wakeWaiters(std::unique_lock<std::mutex>& lock) {
    std::map<uint64_t, std::function<void()>> waiters;
    waiters.swap(waiters_);
    lock.unlock();
    for (const auto& waiter : waiters) {
        waiter.second();
    }
}

void Feed::forgetWaiter(uint64_t subscription) {
    std::lock_guard<std::mutex> lock(mutex_);
    waiters_.erase(subscription);
}

std::shared_ptr<EventStream> Feed::subscribe() {
    std::lock_guard<std::mutex> lock(mutex_);
    return std::make_shared<Subscription>(shared_from_this(), nextSubscription_++);
}

std::vector<FeedEntry> Feed::entries() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<FeedEntry> all;
    for (const Ring& ring : rings_) {
        for (const auto& numbered : ring.entries) {
            all.push_back(numbered.second);
        }
    }
    std::sort(all.begin(), all.end(),
              [](const FeedEntry& a, const FeedEntry& b) { return a.seq < b.seq; });
    return all;
}

std::string Feed::takeEvents(Cursor& cursor, std::function<void()> wake) {
    std::lock_guard<std::mutex> lock(mutex_);
    std::string text;
    // Versions seen are counted from 1 so that a new subscription always gets the state.
    if (cursor.stateSeen != stateVersion_ + 1) {
        text += event("state", state_);
        cursor.stateSeen = stateVersion_ + 1;
    }
    std::array<size_t, 2> next{};  // per ring, the first entry not sent yet
    for (size_t r = 0; r < rings_.size(); ++r) {
        const Ring& ring = rings_[r];
        const uint64_t oldest = ring.entries.empty() ? ring.added + 1 : ring.entries.front().first;
        if (cursor.started && cursor.sent[r] + 1 < oldest) {
            text +=
                event("dropped", "{\"count\":" + std::to_string(oldest - cursor.sent[r] - 1) + "}");
        }
        cursor.sent[r] = std::max(cursor.sent[r], oldest - 1);
        next[r] = static_cast<size_t>(cursor.sent[r] + 1 - oldest);
    }
    cursor.started = true;
    // The two rings' unsent entries, merged in order of arrival.
    for (size_t sent = 0; sent < kEntriesPerChunk; ++sent) {
        size_t pick = rings_.size();
        for (size_t r = 0; r < rings_.size(); ++r) {
            if (next[r] < rings_[r].entries.size() &&
                (pick == rings_.size() || rings_[r].entries[next[r]].second.seq <
                                              rings_[pick].entries[next[pick]].second.seq)) {
                pick = r;
            }
        }
        if (pick == rings_.size()) {
            break;
        }
        const auto& [number, entry] = rings_[pick].entries[next[pick]++];
        text += event("entry", entryJson(entry));
        cursor.sent[pick] = number;
    }
    if (text.empty()) {
        waiters_[cursor.id] = std::move(wake);
    }
    return text;
}

}  // namespace agentsim::console
