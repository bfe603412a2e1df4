// Connecting keys, connect faults, and the journal of the plug-in's writes and actions.
#include <gtest/gtest.h>

#include "TvTestSupport.h"

namespace {

using tvsim::JournalEntry;
using tvtest::arguments;
using tvtest::connect;
using tvtest::IntRecorder;
using tvtest::ValueHandle;

constexpr char kVolume[] = "marlo.sl2.i32.sound.main.volume";
constexpr char kEsn[] = "marlo.sl2.str.app.setting.esn";

using TvConnect = tvtest::TvTest;

TEST_F(TvConnect, MalformedKeyGivesNegativeStatusAndNoHandle) {
    ValueHandle* handle = reinterpret_cast<ValueHandle*>(&handle);
    EXPECT_LT(tvtest::settingsService()->connect("marlo.sl2.i32.", nullptr, handle), 0);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(tv().connectCalls(), 1);
    EXPECT_EQ(tv().openHandles(), 0);
}

TEST_F(TvConnect, NegativeConnectFaultGivesNoHandle) {
    tv().setConnectStatus(kVolume, -5);
    IntRecorder observer;
    ValueHandle* handle = nullptr;
    EXPECT_EQ(tvtest::settingsService()->connect(kVolume, &observer, handle), -5);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(tv().observerCount(kVolume), 0u);
    EXPECT_EQ(tv().openHandles(), 0);
}

TEST_F(TvConnect, PositiveConnectFaultStillGivesAWorkingHandle) {
    tv().setConnectStatus(kVolume, 7);
    IntRecorder observer;
    ValueHandle* handle = nullptr;
    EXPECT_EQ(tvtest::settingsService()->connect(kVolume, &observer, handle), 7);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(tv().observerCount(kVolume), 1u);
    tv().set(kVolume, 12);
    EXPECT_EQ(handle->getInt32(), 12);
    tv().waitUntilDelivered();
    EXPECT_EQ(observer.heard(), std::vector<int32_t>{12});
    tv().setConnectStatus(kVolume, 0);
    EXPECT_NE(connect(kVolume), nullptr);
}

TEST_F(TvConnect, DisconnectReleasesTheHandleAndItsObserver) {
    IntRecorder observer;
    ValueHandle* observed = connect(kVolume, &observer);
    ValueHandle* plain = connect(kVolume);
    EXPECT_EQ(tv().openHandles(), 2);
    EXPECT_EQ(tv().observerCount(kVolume), 1u);

    tvtest::settingsService()->disconnect(kVolume, 0, observed);
    EXPECT_EQ(tv().openHandles(), 1);
    EXPECT_EQ(tv().observerCount(kVolume), 0u);
    tv().set(kVolume, 40);
    tv().waitUntilDelivered();
    EXPECT_TRUE(observer.heard().empty());
    tvtest::settingsService()->disconnect(kVolume, 0, plain);
    EXPECT_EQ(tv().openHandles(), 0);
    EXPECT_EQ(tv().connectCalls(), 2);
}

using TvJournal = tvtest::TvTest;

TEST_F(TvJournal, WritesAndActionsAreJournaledInOrderWithTheirStatus) {
    tv().setWriteStatus(kEsn, 9);
    EXPECT_EQ(connect(kVolume)->setInt32(30), 0);
    EXPECT_EQ(connect(kEsn)->setString("NEW"), 9);
    EXPECT_EQ(tvtest::runAction("marlo.sl2.system.action.send.key", {"KEY_HOME"}), 0);
    EXPECT_NE(connect(kVolume)->setString("31"), 0);

    const std::vector<JournalEntry> journal = tv().takeJournal();
    ASSERT_EQ(journal.size(), 4u);
    EXPECT_EQ(journal[0].kind, JournalEntry::Kind::Write);
    EXPECT_EQ(journal[0].key, kVolume);
    EXPECT_EQ(journal[0].value, tvsim::Value(30));
    EXPECT_EQ(journal[0].status, 0);
    EXPECT_EQ(journal[1].value, tvsim::Value(std::string("NEW")));
    EXPECT_EQ(journal[1].status, 9);
    EXPECT_EQ(journal[2].kind, JournalEntry::Kind::Action);
    EXPECT_EQ(journal[2].key, "marlo.sl2.system.action.send.key");
    ASSERT_EQ(journal[2].arguments.size(), 1u);
    EXPECT_EQ(journal[2].arguments[0].value, "KEY_HOME");
    EXPECT_NE(journal[3].status, 0);
    EXPECT_TRUE(tv().takeJournal().empty());
}

TEST_F(TvJournal, FaultedWriteKeepsTheValueAndNotifiesNobody) {
    tv().set(kVolume, 20);
    IntRecorder observer;
    ValueHandle* volume = connect(kVolume, &observer);
    tv().setWriteStatus(kVolume, 3);
    EXPECT_EQ(volume->setInt32(21), 3);
    tv().waitUntilDelivered();
    EXPECT_EQ(volume->getInt32(), 20);
    EXPECT_TRUE(observer.heard().empty());
}

TEST_F(TvJournal, FaultedActionReturnsTheFaultAndTheTvDoesNotReact) {
    tv().set(kVolume, 20);
    tv().setWriteStatus("marlo.sl2.system.action.send.key", 6);
    EXPECT_EQ(tvtest::runAction("marlo.sl2.system.action.send.key", {"KEY_VOLUME_UP"}), 6);
    EXPECT_EQ(tv().get(kVolume), tvsim::Value(20));
    const std::vector<JournalEntry> journal = tv().takeJournal();
    ASSERT_EQ(journal.size(), 1u);
    EXPECT_EQ(journal[0].status, 6);
}

TEST_F(TvJournal, TheTvsOwnChangesAreNotJournaled) {
    tv().set(kVolume, 50);
    tvtest::runAction("marlo.sl2.system.action.send.key", {"KEY_VOLUME_UP"});
    const std::vector<JournalEntry> journal = tv().takeJournal();
    ASSERT_EQ(journal.size(), 1u);
    EXPECT_EQ(journal[0].kind, JournalEntry::Kind::Action);
}

}  // namespace
