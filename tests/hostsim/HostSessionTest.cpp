#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "zel/ZelSession.h"
#include "zelsim/HostSim.h"

namespace {

class HostSession : public ::testing::Test {
protected:
    void SetUp() override { zelsim::reset(); }

    static void script(int32_t initResult, std::optional<std::string> code = std::nullopt) {
        zelsim::Session session;
        session.initResult = initResult;
        session.code = std::move(code);
        zelsim::setSession(session);
    }
};

TEST_F(HostSession, AcceptedInitIssuesTheScriptedCode) {
    zelsim::Session scripted;
    scripted.initialized = 0;
    scripted.codeOnInit = "654321";
    zelsim::setSession(scripted);

    EXPECT_EQ(ZelSessionInit(3), 0);

    const zelsim::Session now = zelsim::session();
    EXPECT_EQ(now.state, 4);
    EXPECT_EQ(now.code, "654321");
    EXPECT_EQ(now.initialized, 0);
}

TEST_F(HostSession, RefusedInitLeavesTheSessionAlone) {
    script(1);
    EXPECT_EQ(ZelSessionInit(0), 1);

    const zelsim::Session now = zelsim::session();
    EXPECT_EQ(now.state, 1);
    EXPECT_FALSE(now.code.has_value());
}

TEST_F(HostSession, TermReturnsToIdleWithoutCode) {
    ASSERT_EQ(ZelSessionInit(0), 0);
    ZelSessionTerm();

    const zelsim::Session now = zelsim::session();
    EXPECT_EQ(now.state, 1);
    EXPECT_FALSE(now.code.has_value());
}

TEST_F(HostSession, RecordsCallsInOrderUntilTaken) {
    ZelSessionInit(2);
    ZelCheckForSoftwareUpdate();
    ZelSessionTerm();
    ZelLogMessage(3, "hello agent");

    const auto calls = zelsim::takeCalls();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].function, "ZelSessionInit");
    EXPECT_EQ(calls[0].argument, 2);
    EXPECT_EQ(calls[1].function, "ZelCheckForSoftwareUpdate");
    EXPECT_EQ(calls[2].function, "ZelSessionTerm");
    EXPECT_FALSE(calls[2].argument.has_value());
    EXPECT_TRUE(zelsim::takeCalls().empty());
    EXPECT_EQ(zelsim::takeMessages(), std::vector<std::string>{"hello agent"});
    EXPECT_TRUE(zelsim::takeMessages().empty());
}

TEST_F(HostSession, StatusRecordOwnsACopyOfTheCode) {
    script(0, "111111");
    ZelStatus record;
    std::memset(&record, 0xAB, sizeof(record));
    ASSERT_EQ(ZelGetStatus(0, &record), 0);

    script(0, "222222");
    ASSERT_NE(record.sessionCode, nullptr);
    EXPECT_STREQ(record.sessionCode, "111111");
    EXPECT_EQ(record.initialized, 1);
    EXPECT_EQ(record.state, 1);
    EXPECT_EQ(record.reserved1, 0);
    EXPECT_EQ(record.reserved3[5], 0);
    EXPECT_EQ(record.reserved10[11], 0);
    ZelFreeStatus(&record);
}

TEST_F(HostSession, FreeingTwiceIsSafeAndCountsOnce) {
    script(0, "123");
    ZelStatus first{};
    ZelStatus second{};
    ZelGetStatus(0, &first);
    ZelGetStatus(0, &second);
    EXPECT_EQ(zelsim::unreleasedStatusRecords(), 2);

    ZelFreeStatus(&first);
    ZelFreeStatus(&first);
    EXPECT_EQ(first.sessionCode, nullptr);
    EXPECT_EQ(zelsim::unreleasedStatusRecords(), 1);
    ZelFreeStatus(&second);
    EXPECT_EQ(zelsim::unreleasedStatusRecords(), 0);
}

TEST_F(HostSession, RefillingARecordBeforeFreeingItCountsAsALeak) {
    ZelStatus record{};
    ZelGetStatus(0, &record);
    EXPECT_EQ(record.sessionCode, nullptr);
    ZelGetStatus(0, &record);
    ZelFreeStatus(&record);
    EXPECT_EQ(zelsim::unreleasedStatusRecords(), 1);
}

TEST_F(HostSession, ResetRestoresTheInitialState) {
    script(0);
    ZelSessionInit(1);
    ZelLogMessage(1, "x");
    ZelStatus record{};
    ZelGetStatus(0, &record);
    zelsim::Identity identity;
    identity.brand = "Other";
    zelsim::setIdentity(identity);

    zelsim::reset();

    const zelsim::Session now = zelsim::session();
    EXPECT_EQ(now.state, 1);
    EXPECT_FALSE(now.code.has_value());
    EXPECT_TRUE(zelsim::takeCalls().empty());
    EXPECT_TRUE(zelsim::takeMessages().empty());
    EXPECT_EQ(zelsim::unreleasedStatusRecords(), 0);
    EXPECT_EQ(zelsim::identity().brand, "Norvane");
    ZelFreeStatus(&record);
    EXPECT_EQ(zelsim::unreleasedStatusRecords(), 0);
}

}  // namespace
