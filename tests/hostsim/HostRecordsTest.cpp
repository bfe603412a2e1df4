// The simulated agent's records keep their newest entries and count the ones they drop; a
// status read can be held back at its start.
#include <gtest/gtest.h>

#include "zel/ZelSession.h"
#include "zel/core/Logger.h"
#include "zelsim/HostSim.h"

namespace {

class HostRecords : public ::testing::Test {
protected:
    void SetUp() override { zelsim::reset(); }
    void TearDown() override { zelsim::reset(); }
};

TEST_F(HostRecords, LogLinesCallsAndMessagesKeepTheNewest) {
    const int total = static_cast<int>(zelsim::kKeptEntries) + 3;
    for (int i = 0; i < total; ++i) {
        Zel::Core::Logger::Instance().log("unit", i, "function", 2, 3, 5, "line %d", i);
        ZelSessionInit(i);
        ZelLogMessage(2, "message");
    }
    uint64_t dropped = 0;
    const std::vector<zelsim::LogLine> lines = zelsim::takeLogLines(&dropped);
    ASSERT_EQ(lines.size(), zelsim::kKeptEntries);
    EXPECT_EQ(dropped, 3u);
    EXPECT_EQ(lines.front().text, "line 3");
    EXPECT_EQ(lines.back().text, "line " + std::to_string(total - 1));

    const std::vector<zelsim::HostCall> calls = zelsim::takeCalls(&dropped);
    ASSERT_EQ(calls.size(), zelsim::kKeptEntries);
    EXPECT_EQ(dropped, 3u);
    EXPECT_EQ(calls.front().argument, 3);

    EXPECT_EQ(zelsim::takeMessages(&dropped).size(), zelsim::kKeptEntries);
    EXPECT_EQ(dropped, 3u);
    EXPECT_TRUE(zelsim::takeLogLines(&dropped).empty());
    EXPECT_EQ(dropped, 0u) << "counted from the previous take";
}

TEST_F(HostRecords, TheStatusReadHookRunsBeforeTheRecordIsFilled) {
    zelsim::setStatusReadHook([] {
        zelsim::Session session = zelsim::session();
        session.state = 5;
        zelsim::setSession(session);
    });
    ZelStatus status{};
    ZelGetStatus(0, &status);
    EXPECT_EQ(status.state, 5);
    ZelFreeStatus(&status);
}

}  // namespace
