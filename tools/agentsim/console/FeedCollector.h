// Gathers what the TV journaled, what the plug-in printed and what the agent logged into the
// feed, and the state snapshot the page shows, on a thread of its own a few times a second.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Agent.h"
#include "Feed.h"
#include "tvsim/TvSim.h"

namespace agentsim::console {

class FeedCollector {
public:
    using StateSnapshot = std::function<std::string()>;

    FeedCollector(Agent& agent, Feed& feed, StateSnapshot state);
    ~FeedCollector();
    FeedCollector(const FeedCollector&) = delete;
    FeedCollector& operator=(const FeedCollector&) = delete;

    void start();
    void stop();
    // Collects now rather than at the next tick.
    void poke();

private:
    void run();
    // One round of collecting, on the collector's thread.
    void collect();

    Agent& agent_;
    Feed& feed_;
    StateSnapshot state_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
    bool poked_ = false;
    std::thread thread_;
};

// A journal entry as the feed shows it, with what a session setting's value means to the TV.
std::string describeJournalEntry(const tvsim::JournalEntry& entry);
// Whether a console-log text is one of the frame fill's own messages, which come with every
// frame and are shown apart.
bool isFrameMessage(const std::string& text);

}  // namespace agentsim::console
