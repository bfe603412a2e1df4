// The frame route's pump: frames asked for from one thread, answers to the pages that wait, and
// the counts the page shows.
#include <gtest/gtest.h>
#include <json/value.h>

#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <set>
#include <thread>

#include "ConsoleCommand.h"
#include "FramePump.h"
#include "JsonText.h"

namespace agentsim::console {
namespace {

// A plug-in whose frames are 64 x 32, the first call missing as the real one does; every
// third frame changes one tile. It records which threads asked.
struct FakeScreen {
    static std::atomic<int> calls;
    static std::mutex mutex;
    static std::set<std::thread::id> threads;

    static int32_t fill(unsigned char* buffer, uint32_t size) {
        {
            std::lock_guard<std::mutex> lock(mutex);
            threads.insert(std::this_thread::get_id());
        }
        const int call = calls++;
        if (call == 0 || size < 64 * 32 * 4) {
            return -1;
        }
        std::memset(buffer, 0x40, size);
        buffer[0] = static_cast<unsigned char>(call / 3);
        return 0;
    }
    static int32_t width() { return 64; }
    static int32_t height() { return 32; }
};
std::atomic<int> FakeScreen::calls{0};
std::mutex FakeScreen::mutex;
std::set<std::thread::id> FakeScreen::threads;

PluginEntryPoints fakePlugin() {
    PluginEntryPoints plugin;
    plugin.fillVideoBuffer = &FakeScreen::fill;
    plugin.getVideoWidth = &FakeScreen::width;
    plugin.getVideoHeight = &FakeScreen::height;
    return plugin;
}

// Waits for one frame answer and decodes its header.
class Answer {
public:
    FramePump::FrameAnswer callback() {
        return [this](Payload payload) {
            std::string bytes;
            for (const auto& [data, size] : payload.pieces) {
                bytes.append(static_cast<const char*>(data), size);
            }
            std::lock_guard<std::mutex> lock(mutex_);
            bytes_ = bytes;
            done_ = true;
            arrived_.notify_all();
        };
    }

    Json::Value header() {
        std::unique_lock<std::mutex> lock(mutex_);
        EXPECT_TRUE(arrived_.wait_for(lock, std::chrono::seconds(20), [this] { return done_; }));
        Json::Value json;
        simjson::ParseError error;
        if (bytes_.size() >= 4) {
            uint32_t length = 0;
            std::memcpy(&length, bytes_.data(), 4);
            simjson::parse(bytes_.substr(4, length), json, error);
        }
        return json;
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::string bytes_;
    bool done_ = false;
};

Json::Value ask(FramePump& pump, uint64_t have, int rate) {
    Answer answer;
    pump.request(have, rate, answer.callback());
    return answer.header();
}

TEST(FramePump, AnswersEachPageWithANewerFrameFromOneThread) {
    FakeScreen::calls = 0;
    FramePump pump(fakePlugin());
    pump.start();
    const Json::Value first = ask(pump, 0, 10);
    EXPECT_EQ(first["seq"], 1);
    EXPECT_EQ(simjson::compact(first["rects"]), "[[0,0,64,32]]");
    EXPECT_EQ(first["misses"], 1) << "the first fill finds no screenshot yet";
    EXPECT_EQ(first["frames"], 1);
    EXPECT_EQ(first["rate"], 10);

    // Two pages waiting on the same frame both get the next one.
    Answer second;
    Answer third;
    pump.request(1, 10, second.callback());
    pump.request(1, 4, third.callback());
    const Json::Value a = second.header();
    const Json::Value b = third.header();
    EXPECT_EQ(a["seq"], 2);
    EXPECT_EQ(b["seq"], 2);
    EXPECT_EQ(a["rects"].size(), 0u) << "the same picture again: nothing to paint";

    // A page still on frame 1 gets only what changed since frame 1.
    Json::Value later;
    for (uint64_t seq = 2; seq < 5; seq = later["seq"].asUInt64()) {
        later = ask(pump, seq, 10);
    }
    const Json::Value fromOne = ask(pump, 1, 10);
    EXPECT_EQ(simjson::compact(fromOne["rects"]), "[[0,0,64,32]]");
    EXPECT_GE(fromOne["fills"].asInt(), fromOne["frames"].asInt() + 1);
    pump.stop();
    EXPECT_EQ(FakeScreen::threads.size(), 1u);
}

TEST(FramePump, AnswersThePagesStillWaitingWhenItStops) {
    FakeScreen::calls = 0;
    FramePump pump(fakePlugin());
    Answer waiting;
    pump.request(0, 1, waiting.callback());
    pump.stop();
    const Json::Value header = waiting.header();
    EXPECT_EQ(header["seq"], 0);
    EXPECT_EQ(header["rects"].size(), 0u);
    EXPECT_EQ(FakeScreen::calls.load(), 0) << "a pump never started asks for nothing";
}

TEST(ConsoleArguments, PortAndAddress) {
    EXPECT_FALSE(parseConsoleArguments({}).port);
    EXPECT_EQ(parseConsoleArguments({}).address, "127.0.0.1");
    const ConsoleSettings settings = parseConsoleArguments({"--port", "0", "--listen", "::1"});
    EXPECT_EQ(settings.port, 0);
    EXPECT_EQ(settings.address, "::1");
    EXPECT_TRUE(settings.addressGiven);
    for (const std::vector<std::string>& bad :
         std::vector<std::vector<std::string>>{{"--port"},
                                               {"--port", "65536"},
                                               {"--port", "-1"},
                                               {"--port", "80x"},
                                               {"--listen"},
                                               {"--listen", "host.example"},
                                               {"extra"}}) {
        EXPECT_THROW(parseConsoleArguments(bad), std::invalid_argument) << bad[0];
    }
}

}  // namespace
}  // namespace agentsim::console
