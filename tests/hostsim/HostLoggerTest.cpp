#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "zel/core/Logger.h"
#include "zelsim/HostSim.h"

namespace {

using Zel::Core::FunctionTrace;
using Zel::Core::Logger;

class HostLogger : public ::testing::Test {
protected:
    void SetUp() override { zelsim::reset(); }
};

TEST_F(HostLogger, RecordsFormattedTextWithItsOrigin) {
    Logger::Instance().log("Unit.cpp", 42, "doWork", 1, 2, 5, "%s=%d (%.1f)", "count", 7, 2.5);

    const auto lines = zelsim::takeLogLines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].severity, 5);
    EXPECT_EQ(lines[0].sourceUnit, "Unit.cpp");
    EXPECT_EQ(lines[0].line, 42);
    EXPECT_EQ(lines[0].function, "doWork");
    EXPECT_EQ(lines[0].text, "count=7 (2.5)");
    EXPECT_TRUE(zelsim::takeLogLines().empty());
}

TEST_F(HostLogger, KeepsLongMessagesWhole) {
    const std::string payload(5000, 'x');
    Logger::Instance().log("Unit.cpp", 1, "f", 0, 0, 3, "<%s|%d>", payload.c_str(), 12345);

    const auto lines = zelsim::takeLogLines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text, "<" + payload + "|12345>");
}

TEST_F(HostLogger, TestAnswersUpToTheMaximumSeverityAndCountsCalls) {
    Logger& logger = Logger::Instance();
    const uint64_t before = zelsim::loggerTestCalls();
    EXPECT_TRUE(logger.test(0, 0, 9));

    zelsim::setMaxLoggedSeverity(3);
    EXPECT_TRUE(logger.test(0, 0, 3));
    EXPECT_FALSE(logger.test(0, 0, 4));

    zelsim::reset();
    EXPECT_TRUE(logger.test(0, 0, 9));
    EXPECT_EQ(zelsim::loggerTestCalls() - before, 4u);
}

TEST_F(HostLogger, EchoesToStderrWhenAsked) {
    setenv("ZELSIM_LOG_STDERR", "1", 1);
    ::testing::internal::CaptureStderr();
    Logger::Instance().log("Unit.cpp", 1, "announce", 0, 0, 2, "ready %d", 1);
    const std::string echoed = ::testing::internal::GetCapturedStderr();
    unsetenv("ZELSIM_LOG_STDERR");

    EXPECT_EQ(echoed, "[2] announce: ready 1\n");
}

TEST_F(HostLogger, TracesNestedFunctionsInOrder) {
    {
        FunctionTrace outer("outer", "A.cpp", 10, 0);
        FunctionTrace inner("inner", "B.cpp", 20, 0);
    }
    const auto events = zelsim::takeTraceEvents();
    ASSERT_EQ(events.size(), 4u);
    EXPECT_TRUE(events[0].enter);
    EXPECT_EQ(events[0].function, "outer");
    EXPECT_EQ(events[0].line, 10);
    EXPECT_EQ(events[1].function, "inner");
    EXPECT_EQ(events[1].sourceUnit, "B.cpp");
    EXPECT_FALSE(events[2].enter);
    EXPECT_EQ(events[2].function, "inner");
    EXPECT_FALSE(events[3].enter);
    EXPECT_EQ(events[3].function, "outer");
    EXPECT_TRUE(zelsim::takeTraceEvents().empty());
}

TEST_F(HostLogger, KeepsOnlyTheMostRecentTraceEvents) {
    for (int i = 0; i < 6000; ++i) {
        FunctionTrace trace("traced", "A.cpp", i, 0);
    }
    const auto events = zelsim::takeTraceEvents();
    ASSERT_EQ(events.size(), 10000u);
    EXPECT_TRUE(events.front().enter);
    EXPECT_EQ(events.front().line, 1000);
    EXPECT_FALSE(events.back().enter);
    EXPECT_EQ(events[events.size() - 2].line, 5999);
}

}  // namespace
