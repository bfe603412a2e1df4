#include "FeedCollector.h"

#include <chrono>

#include "JsonText.h"
#include "Presentation.h"
#include "ScriptValues.h"
#include "SessionSettings.h"
#include "zelsim/HostSim.h"

namespace agentsim::console {
namespace {

constexpr auto kTick = std::chrono::milliseconds(100);

// The frame fill's messages, as it prints them for every frame or missed frame, and the settings
// client's report of each capture action.
const char* const kFrameMessages[] = {
    "size = ",         "fillVideoFrameBuffer", "The raw file is not exit.", "< WIDTH * HEIGHT * 4",
    kScreenCaptureKey,
};

std::string settingMeaning(const std::string& key, const tvsim::Value& value) {
    const auto* number = std::get_if<int32_t>(&value);
    if (number == nullptr) {
        return std::string();
    }
    if (key == kRemoteSupportKey) {
        return *number == kRemoteSupportOn    ? " (remote support on)"
               : *number == kRemoteSupportOff ? " (remote support off)"
                                              : "";
    }
    if (key == kSessionNotifyKey) {
        return *number == kNotifyConnected      ? " (the TV shows: an engineer is connected)"
               : *number == kNotifyDisconnected ? " (the TV shows: the session has ended)"
                                                : "";
    }
    return std::string();
}

std::string hostCallText(const zelsim::HostCall& call) {
    return call.function + "(" + (call.argument ? std::to_string(*call.argument) : "") + ")";
}

}  // namespace

std::string describeJournalEntry(const tvsim::JournalEntry& entry) {
    if (entry.kind == tvsim::JournalEntry::Kind::Write) {
        return "set " + entry.key + " = " + simjson::compact(settingToJson(entry.value)) +
               settingMeaning(entry.key, entry.value);
    }
    return "action " + entry.key + " " + simjson::compact(journalEntryToJson(entry)["action"]);
}

bool isFrameMessage(const std::string& text) {
    for (const char* message : kFrameMessages) {
        if (text.find(message) != std::string::npos) {
            return true;
        }
    }
    return false;
}

FeedCollector::FeedCollector(Agent& agent, Feed& feed, StateSnapshot state)
    : agent_(agent), feed_(feed), state_(std::move(state)) {}

FeedCollector::~FeedCollector() {
    stop();
}

void FeedCollector::start() {
    thread_ = std::thread([this] { run(); });
}

void FeedCollector::stop() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void FeedCollector::poke() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        poked_ = true;
    }
    wake_.notify_all();
}

void FeedCollector::run() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stopping_) {
        wake_.wait_for(lock, kTick, [this] { return stopping_ || poked_; });
        poked_ = false;
        lock.unlock();
        collect();
        lock.lock();
    }
    lock.unlock();
    collect();
}

void FeedCollector::collect() {
    std::vector<std::pair<std::string, std::string>> entries;
    // Each record keeps its newest entries between takes; what it had to let go is said too.
    const auto noteDropped = [&](const char* source, uint64_t dropped) {
        if (dropped > 0) {
            entries.emplace_back(source, std::to_string(dropped) + " older entries were not kept");
        }
    };
    uint64_t dropped = 0;
    for (const tvsim::JournalEntry& entry : tvsim::Tv::instance().takeJournal(&dropped)) {
        entries.emplace_back(entry.key == kScreenCaptureKey ? "frame" : "tv",
                             describeJournalEntry(entry));
    }
    noteDropped("tv", dropped);
    for (const std::string& line : agent_.takeConsoleLines(&dropped)) {
        entries.emplace_back(isFrameMessage(line) ? "frame" : "plugin", readable(line));
    }
    noteDropped("plugin", dropped);
    for (const zelsim::LogLine& line : zelsim::takeLogLines(&dropped)) {
        entries.emplace_back("agent", "[" + std::to_string(line.severity) + "] " + line.function +
                                          ": " + readable(line.text));
    }
    noteDropped("agent", dropped);
    for (const zelsim::HostCall& call : zelsim::takeCalls(&dropped)) {
        entries.emplace_back("host", hostCallText(call));
    }
    noteDropped("host", dropped);
    for (const std::string& message : zelsim::takeMessages(&dropped)) {
        entries.emplace_back("host", "ZelLogMessage: " + message);
    }
    noteDropped("host", dropped);
    feed_.add(entries);
    feed_.setState(state_());
}

}  // namespace agentsim::console
