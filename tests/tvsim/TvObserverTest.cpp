// Observer notifications: on the service's own thread, in order, only for real changes.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>

#include "TvTestSupport.h"

namespace {

using tvtest::connect;
using tvtest::IntRecorder;
using tvtest::StringRecorder;

constexpr char kEnable[] = "marlo.sl2.i32.app.setting.zel.enable";
constexpr char kSessionCode[] = "marlo.sl2.str.app.setting.zel.session.code";

using TvObservers = tvtest::TvTest;

TEST_F(TvObservers, ChangesArriveInOrderOnTheServiceThread) {
    IntRecorder observer;
    connect(kEnable, &observer);
    for (int32_t value : {1, 2, 3}) {
        tv().set(kEnable, value);
    }
    tv().waitUntilDelivered();
    EXPECT_EQ(observer.heard(), (std::vector<int32_t>{1, 2, 3}));
    for (std::thread::id thread : observer.threads()) {
        EXPECT_NE(thread, std::this_thread::get_id());
        EXPECT_EQ(thread, observer.threads().front());
    }
}

TEST_F(TvObservers, OnlyRealChangesAreDelivered) {
    IntRecorder observer;
    connect(kEnable, &observer);
    tv().set(kEnable, 0);  // a never-set key already reads 0
    tv().set(kEnable, 42405);
    tv().set(kEnable, 42405);
    connect(kEnable)->setInt32(42405);
    connect(kEnable)->setInt32(23130);
    tv().waitUntilDelivered();
    EXPECT_EQ(observer.heard(), (std::vector<int32_t>{42405, 23130}));
}

TEST_F(TvObservers, StringObserversHearTextAndJoinedLists) {
    StringRecorder observer;
    connect(kSessionCode, &observer);
    connect(kSessionCode)->setString("session0");
    tv().set(kSessionCode, std::vector<std::string>{"a", "b"});
    tv().waitUntilDelivered();
    EXPECT_EQ(observer.heard(), (std::vector<std::string>{"session0", "a,b"}));
}

TEST_F(TvObservers, EveryObserverOfTheKeyHearsAndOthersDoNot) {
    IntRecorder first;
    IntRecorder second;
    IntRecorder elsewhere;
    connect(kEnable, &first);
    connect(kEnable, &second);
    connect("marlo.sl2.i32.app.setting.zel.notify", &elsewhere);
    tv().set(kEnable, 5);
    tv().waitUntilDelivered();
    EXPECT_EQ(first.heard(), std::vector<int32_t>{5});
    EXPECT_EQ(second.heard(), std::vector<int32_t>{5});
    EXPECT_TRUE(elsewhere.heard().empty());
}

// Finishes its work a little after being called, to catch a wait that returns too early.
class SlowObserver : public tvmodelapi::ObserverNumericInteger {
public:
    void onChange(int32_t) override {
        started = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        finished = true;
    }
    void onDisconnected() override {}
    std::atomic<bool> started{false};
    std::atomic<bool> finished{false};
};

TEST_F(TvObservers, WaitUntilDeliveredWaitsForARunningCallback) {
    SlowObserver observer;
    connect(kEnable, &observer);
    tv().set(kEnable, 1);
    while (!observer.started) {
        std::this_thread::yield();
    }
    // Nothing is queued any more, but the callback is still at work.
    tv().waitUntilDelivered();
    EXPECT_TRUE(observer.finished);
}

// Answers a session-code request by writing the code back, as the plug-in does, and waits for
// delivery from inside its own callback.
class AnsweringObserver : public tvmodelapi::ObserverString {
public:
    void onChange(const std::string& value) override {
        if (value == "session0") {
            tvtest::connect(kSessionCode)->setString("123456");
            tvsim::Tv::instance().waitUntilDelivered();
        }
        std::lock_guard<std::mutex> lock(mutex);
        heard.push_back(value);
    }
    void onDisconnected() override {}
    std::mutex mutex;
    std::vector<std::string> heard;
};

TEST_F(TvObservers, CallbackThatWritesAnObservedKeyIsDeliveredInTurn) {
    AnsweringObserver observer;
    connect(kSessionCode, &observer);
    tv().set(kSessionCode, std::string("session0"));
    tv().waitUntilDelivered();
    std::lock_guard<std::mutex> lock(observer.mutex);
    EXPECT_EQ(observer.heard, (std::vector<std::string>{"session0", "123456"}));
}

TEST_F(TvObservers, ResetForgetsObservers) {
    IntRecorder observer;
    connect(kEnable, &observer);
    tv().reset();
    EXPECT_EQ(tv().observerCount(kEnable), 0u);
    tv().set(kEnable, 9);
    tv().waitUntilDelivered();
    EXPECT_TRUE(observer.heard().empty());
}

}  // namespace
