// The session controller's timings, seen at the exact instants on either side of each edge: time
// is held and runs on only as far as each step lets it, so no check depends on the machine's
// speed. A sleep or timed wait shows as the instant it waits for.
#include <gmock/gmock.h>

#include <future>

#include "SessionTestSupport.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::finishes;
using testing_support::HeldTime;

constexpr double kCodeLife = 120;

struct CodeRequest {
    int32_t result = -1;
    std::string code;
};

class SessionTiming : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        // Time stands still except while a step lets it run; then it may run fast.
        platform.tv().setTimeScale(10000);
        // The screen size probe after a new code needs no screenshot here.
        platform.tv().setCaptureEnabled(false);
    }

    // The agent in `state` with the code "123456" out; a new session's init answers
    // `initResult`.
    static void setAgent(int32_t state, int32_t initResult = 0) {
        zelsim::Session session = zelsim::session();
        session.initialized = 1;
        session.state = state;
        session.code = "123456";
        session.initResult = initResult;
        zelsim::setSession(session);
    }

    static std::future<CodeRequest> requestCode(HeldTime& time) {
        return time.inBackground([] {
            CodeRequest request;
            request.result = RequestZelSessionCode(request.code);
            return request;
        });
    }

    // Lets the poll due at `at` run, and waits until it sleeps again.
    static void pollAt(HeldTime& time, double at) {
        time.advanceTo(at);
        ASSERT_TRUE(time.awaitWakeupAt(at + 3)) << "the poll at " << at;
    }

    // Support on from 0, polling at 0, 3, 6, ...; the agent's code is seen by the first poll,
    // so that a request at `at` (before 3) takes it at once: the code's life starts at `at`.
    void obtainCodeAt(HeldTime& time, double at) {
        setAgent(4);
        StartZelSessionSupport();
        ASSERT_TRUE(time.awaitWakeupAt(3)) << "the first poll";
        time.advanceTo(at);
        const size_t alreadyPending = time.wakeupsPendingAt(at + 1);
        std::future<CodeRequest> request = requestCode(time);
        ASSERT_TRUE(time.awaitWakeupAt(at + 1, alreadyPending + 1))
            << "the screen size probe after the code";
        pollAt(time, 3);
        time.advanceTo(at + 1);
        ASSERT_TRUE(finishes(request));
        ASSERT_EQ(request.get().code, "123456");
        zelsim::takeCalls();
    }

    // Polls on from 6 until one ends the session; the instant of that poll, or 0.
    double pollUntilTheSessionEnds(HeldTime& time) {
        for (double at = 6; at <= 150; at += 3) {
            time.advanceTo(at);
            bool ended = false;
            EXPECT_TRUE(testing_support::eventually([&] {
                ended = time.wakeupsPendingAt(at + 2) > 0;
                return ended || time.wakeupsPendingAt(at + 3) > 0;
            })) << "the poll at "
                << at;
            if (ended) {
                return at;
            }
        }
        return 0;
    }
};

TEST_F(SessionTiming, PollsAtOnceAndThenEveryThreeSeconds) {
    HeldTime time;
    StartZelSessionSupport();
    ASSERT_TRUE(time.awaitWakeupAt(3));
    EXPECT_EQ(zelsim::takeMessages().size(), 1u) << "the first poll comes at once";
    for (double at = 3; at <= 9; at += 3) {
        pollAt(time, at);
        EXPECT_EQ(zelsim::takeMessages().size(), 1u) << "one poll at " << at;
    }
}

TEST_F(SessionTiming, TheCodeIsShownAgainUntil121SecondsHavePassed) {
    HeldTime time;
    obtainCodeAt(time, 2);
    // Support off: only the request itself looks at the code's age from here on.
    StopZelSessionSupport();
    setAgent(4, 1);
    zelsim::takeCalls();

    time.advanceTo(2 + kCodeLife + 0.999);
    std::future<CodeRequest> inside = requestCode(time);
    ASSERT_TRUE(finishes(inside));
    const CodeRequest shown = inside.get();
    EXPECT_EQ(shown.result, 0);
    EXPECT_EQ(shown.code, "123456");
    EXPECT_THAT(zelsim::takeCalls(), IsEmpty());

    time.advanceTo(2 + kCodeLife + 1);
    std::future<CodeRequest> outside = requestCode(time);
    ASSERT_TRUE(time.awaitWakeupAt(2 + kCodeLife + 3)) << "2 s after ending the old session";
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelSessionTerm"));
    time.advanceTo(2 + kCodeLife + 3);
    ASSERT_TRUE(finishes(outside));
    EXPECT_EQ(outside.get().result, 2) << "the new session's init fails";
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelSessionInit"));
}

TEST_F(SessionTiming, APollJustInsideTheCodesLifeLeavesItAlone) {
    HeldTime time;
    obtainCodeAt(time, 2.001);
    // The poll at 123 comes 120.999 s after the code; the one at 126 ends it.
    EXPECT_EQ(pollUntilTheSessionEnds(time), 126);
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelSessionTerm"));
}

TEST_F(SessionTiming, TheFirstPollPastTheCodesLifeEndsItAndPausesTwoSeconds) {
    HeldTime time;
    obtainCodeAt(time, 2);
    EXPECT_EQ(pollUntilTheSessionEnds(time), 2 + kCodeLife + 1);
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelSessionTerm"));
    EXPECT_THAT(console.take(),
                HasSubstr("Session code timeout and not connect, terminate current session"));
    zelsim::takeMessages();
    pollAt(time, 2 + kCodeLife + 3);
    EXPECT_EQ(zelsim::takeMessages().size(), 1u) << "polling goes on after the pause";
}

TEST_F(SessionTiming, TheCodeWaitGivesUpSixtySecondsAfterAskingTheAgent) {
    HeldTime time;
    // Support off: no poll sees the agent's new session until the test switches support on.
    std::future<CodeRequest> late = requestCode(time);
    ASSERT_TRUE(time.awaitWakeupAt(60));
    time.advanceTo(60);
    ASSERT_TRUE(finishes(late));
    EXPECT_EQ(late.get().result, 2) << "not ready when the wait ended";

    std::future<CodeRequest> inTime = requestCode(time);
    ASSERT_TRUE(time.awaitWakeupAt(120));
    time.advanceTo(119.999);
    StartZelSessionSupport();  // its first poll finds the session ready
    ASSERT_TRUE(time.awaitWakeupAt(120.999)) << "the screen size probe after the code";
    time.advanceTo(120.999);
    ASSERT_TRUE(finishes(inTime));
    const CodeRequest obtained = inTime.get();
    EXPECT_EQ(obtained.result, 0);
    EXPECT_EQ(obtained.code, "123456");
}

// A host-down wait without a limit (0) has no deadline to see, and nothing ends it but a host
// already down when it starts; only timed ones are checked.
TEST_F(SessionTiming, AHostDownWaitEndsWhenItsTimeIsUp) {
    HeldTime time;
    std::future<int32_t> wait = time.inBackground([] { return WaitZelHostDown(5); });
    ASSERT_TRUE(time.awaitWakeupAt(5));
    time.advanceTo(4.999);
    EXPECT_FALSE(testing_support::finished(wait));
    time.advanceTo(5);
    ASSERT_TRUE(finishes(wait));
    EXPECT_EQ(wait.get(), 1);
}

// Enabling forgets a connection when the agent's session is over (states 6 to 8): a later
// disconnect is then not reported.
TEST_F(SessionTiming, EnablingForgetsAConnectionOnlyInStatesSixToEight) {
    HeldTime time;
    double at = 0;
    for (int32_t state : {4, 6, 7, 8, 9}) {
        SetSessionConnectStatus(1);
        setSession(1, state);
        StartZelSessionSupport();
        ASSERT_TRUE(time.awaitWakeupAt(at + 3));
        setSession(1, 6);
        pollAt(time, at + 3);
        StopZelSessionSupport();
        const bool over = state >= 6 && state <= 8;
        const std::vector<int32_t> connectedOnly{0, 1};
        const std::vector<int32_t> disconnectReported{0, 1, 0, 2};
        EXPECT_EQ(notifyWrites(), over ? connectedOnly : disconnectReported)
            << "enabled in state " << state;
        // Clear of the stopped poll thread's last wake-up.
        at += 5;
        time.advanceTo(at);
    }
}

TEST_F(SessionTest, OnlyAnAgentReportingOneIsInitialised) {
    setSession(2, 5, 3);
    std::string code;
    EXPECT_EQ(RequestZelSessionCode(code), 1) << "no running session is taken for granted";
    EXPECT_THAT(console.take(), HasSubstr("Zel is not initialized."));
}

}  // namespace
}  // namespace norvane
