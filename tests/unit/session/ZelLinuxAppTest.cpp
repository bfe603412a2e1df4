#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "SessionTestSupport.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(SessionTest, OnlyTheTwoEnableValuesDoAnything) {
    for (int32_t value : {0, 1, 0xA5A4, 0x5A5B, -1}) {
        switchSupport(value);
    }
    platform.tv().sleepFor(10);
    EXPECT_THAT(zelsim::takeMessages(), IsEmpty()) << "no poll thread";
    EXPECT_THAT(zelsim::takeCalls(), IsEmpty());
    EXPECT_EQ(console.take(), "");
}

TEST_F(SessionTest, EnablingStartsPollingAndDisablingStopsIt) {
    switchSupport(kRemoteSupportOn);
    EXPECT_THAT(console.take(), HasSubstr("\t<-- Set Remote Control Enable -->\n"));
    EXPECT_TRUE(eventually([] { return !zelsim::takeMessages().empty(); }));

    switchSupport(kRemoteSupportOff);
    EXPECT_THAT(console.take(), HasSubstr("\t<-- Set Remote Control Disable -->\n"));
    platform.tv().sleepFor(20);
    zelsim::takeMessages();
    platform.tv().sleepFor(10);
    EXPECT_THAT(zelsim::takeMessages(), IsEmpty());
}

TEST_F(SessionTest, CodeRequestStartsASessionAndShowsItsCode) {
    switchSupport(kRemoteSupportOn);
    EXPECT_EQ(askForCode(), "123456");

    const auto journal = platform.tv().takeJournal();
    std::vector<std::string> codes;
    for (const auto& entry : journal) {
        if (entry.key == kSessionCodeKey)
            codes.push_back(std::get<std::string>(entry.value));
    }
    EXPECT_THAT(codes, ElementsAre("sessionDefault", "123456"));
    const auto calls = zelsim::takeCalls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].function, "ZelSessionInit");
    EXPECT_EQ(calls[0].argument, 1);
    const std::string log = console.take();
    EXPECT_THAT(log, HasSubstr("\t<-- Get Session Code by UI. -->\n"));
    EXPECT_THAT(log, HasSubstr("\t<-- Session Code: 123456\n -->\n"));
    EXPECT_THAT(log, HasSubstr("ZelBackupAQPQ called\n"));
}

TEST_F(SessionTest, SameCodeWithinItsLifeAndANewSessionAfterIt) {
    // The screen size probe after a code draws no screenshot, so that a slow (emulated, loaded)
    // machine keeps the requests well inside the code's life.
    platform.tv().setCaptureEnabled(false);
    switchSupport(kRemoteSupportOn);
    ASSERT_EQ(askForCode(), "123456");
    zelsim::takeCalls();

    // Well inside the 120-second life: the code's time is taken before the request's screen
    // capture, which takes tens of simulated seconds on a loaded or emulated machine.
    platform.tv().sleepFor(30);
    EXPECT_EQ(askForCode(), "123456");
    EXPECT_THAT(zelsim::takeCalls(), IsEmpty());
    EXPECT_THAT(console.take(), HasSubstr("Already have a session code, just show it."));

    // Past 120 seconds the poll loop ends the unused session; the next request starts anew.
    zelsim::Session session = zelsim::session();
    session.codeOnInit = "654321";
    zelsim::setSession(session);
    ASSERT_TRUE(eventually([] {
        for (const auto& call : zelsim::takeCalls()) {
            if (call.function == "ZelSessionTerm")
                return true;
        }
        return false;
    }));
    EXPECT_THAT(console.take(),
                HasSubstr("Session code timeout and not connect, terminate current session"));
    // The new code, whether or not the next poll saw the ended session before the new one.
    EXPECT_EQ(askForCode(), "654321");
    EXPECT_THAT(callNames(zelsim::takeCalls()), testing::Contains("ZelSessionInit"));
}

TEST_F(SessionTest, ExpiredCodeIsReplacedByTheRequestItself) {
    // Support is off, so no poll loop ends the session; the request notices the old code.
    switchSupport(kRemoteSupportOn);
    ASSERT_EQ(askForCode(), "123456");
    switchSupport(kRemoteSupportOff);
    setSession(1, 4);
    zelsim::takeCalls();
    switchSupport(kRemoteSupportOn);
    platform.tv().sleepFor(121.5);
    askForCode();
    EXPECT_THAT(callNames(zelsim::takeCalls()),
                testing::IsSupersetOf({"ZelSessionTerm", "ZelSessionInit"}));
}

TEST_F(SessionTest, NoNetworkAnswersNetworkErrorWithoutTheAgent) {
    switchSupport(kRemoteSupportOn);
    platform.tv().set("marlo.sl2.i32.local.network.available", 0);
    EXPECT_EQ(askForCode(), "networkError");
    EXPECT_THAT(zelsim::takeCalls(), IsEmpty());
    EXPECT_THAT(console.take(), HasSubstr("\t<** Network is not connect! **>\n"));
}

TEST_F(SessionTest, AgentInitFailuresAreReportedToTheMenu) {
    switchSupport(kRemoteSupportOn);
    setSession(1, 1, 1);
    EXPECT_EQ(askForCode(), "networkError");
    EXPECT_THAT(console.take(), HasSubstr("Network error, zelRet = 1"));
    setSession(1, 1, 3);
    EXPECT_EQ(askForCode(), "serverError");
    EXPECT_THAT(console.take(), HasSubstr("Server error, zelRet = 3"));
}

TEST_F(SessionTest, NoStateChangeWithinTheWaitIsANetworkError) {
    // Support is off: nothing polls the agent, so the session never looks ready.
    EXPECT_EQ(askForCode(), "networkError");
    EXPECT_THAT(console.take(), HasSubstr("\t<** Network error! **>\n"));
}

TEST_F(SessionTest, RunningSessionAnswersConnectedAlready) {
    setSession(1, 5);
    EXPECT_EQ(askForCode(), "connectedAlready");
    EXPECT_THAT(zelsim::takeCalls(), IsEmpty());
}

TEST_F(SessionTest, ConnectAndDisconnectAreReportedTwiceEach) {
    switchSupport(kRemoteSupportOn);
    ASSERT_EQ(askForCode(), "123456");
    notifyWrites();

    setSession(1, 5);
    ASSERT_TRUE(eventually(
        [this] { return console.take().find("Zel Session connected.") != std::string::npos; }));
    EXPECT_THAT(awaitNotifyWrites(2), ElementsAre(0, 1));

    setSession(1, 6);
    ASSERT_TRUE(eventually(
        [this] { return console.take().find("Zel Session disconnect.") != std::string::npos; }));
    EXPECT_THAT(awaitNotifyWrites(2), ElementsAre(0, 2));
}

TEST_F(SessionTest, DisconnectWithoutConnectWritesNothing) {
    switchSupport(kRemoteSupportOn);
    setSession(1, 6);
    platform.tv().sleepFor(10);
    setSession(1, 1);
    platform.tv().sleepFor(10);
    EXPECT_THAT(notifyWrites(), IsEmpty());
}

TEST_F(SessionTest, DisablingEndsTheSessionOnlyInTheListedStates) {
    for (int32_t state = 0; state <= 8; ++state) {
        setSession(1, state);
        StopZelSessionSupport();
        const bool ended = !zelsim::takeCalls().empty();
        const bool expected = state == 0 || (state >= 2 && state <= 5);
        EXPECT_EQ(ended, expected) << "state " << state;
    }
    setSession(0, 4);
    StopZelSessionSupport();
    EXPECT_THAT(zelsim::takeCalls(), IsEmpty()) << "no session on an uninitialised agent";
}

TEST_F(SessionTest, ConnectStatusIsWrittenAfterAZero) {
    SetSessionConnectStatus(1);
    SetSessionConnectStatus(0);
    SetSessionConnectStatus(7);
    EXPECT_THAT(notifyWrites(), ElementsAre(0, 1, 0, 2, 0, 2));
}

TEST_F(SessionTest, HostDownWaitSeesTheAgentGoAndOtherwiseTimesOut) {
    EXPECT_EQ(WaitZelHostDown(5), 1);
    // The first poll finds the agent uninitialised.
    setSession(0, 1);
    switchSupport(kRemoteSupportOn);
    ASSERT_TRUE(eventually([] { return !zelsim::takeMessages().empty(); }));
    EXPECT_EQ(WaitZelHostDown(5), 0);
    EXPECT_EQ(WaitZelHostDown(5), 1) << "the flag is consumed";
}

TEST_F(SessionTest, RegionQueryByCountryBrandAndState) {
    struct Case {
        const char* country;
        const char* brand;
        int32_t state;
        int32_t expected;
    };
    const Case cases[] = {
        {"Usa", "Norvane", 1, 1}, {"Canada", "Norvane", 4, 1},  {"Mexico", "Norvane", 7, 2},
        {"usa", "Norvane", 1, 2}, {"Germany", "Norvane", 1, 2}, {"Usa", "Other", 1, 2},
    };
    for (const Case& c : cases) {
        platform.tv().set("marlo.sl2.str.basic.settings.country", std::string(c.country));
        platform.tv().set("marlo.sl2.str.nvfactory.fullbrand", std::string(c.brand));
        setSession(1, c.state);
        EXPECT_EQ(ZelRegionQuery(), c.expected) << c.country << " " << c.brand << " " << c.state;
    }
    EXPECT_THAT(callNames(zelsim::takeCalls()), ElementsAre("ZelCheckForSoftwareUpdate"));
}

TEST_F(SessionTest, TogglingUnderLoadNeitherCrashesNorDeadlocksNorLeaks) {
    std::atomic<bool> running{true};
    std::thread requester([&] {
        while (running) {
            std::string code;
            RequestZelSessionCode(code);
        }
    });
    for (int i = 0; i < 1000; ++i) {
        if (i % 2 == 0) {
            StartZelSessionSupport();
        } else {
            StopZelSessionSupport();
        }
        if (i % 100 == 0) {
            setSession(1, i % 400 == 0 ? 5 : 4);
        }
    }
    running = false;
    requester.join();
    StopZelSessionSupport();
    platform.tv().sleepFor(10);
    EXPECT_TRUE(eventually([] { return zelsim::unreleasedStatusRecords() == 0; }));
}

}  // namespace
}  // namespace norvane
