#include "bridge/BizDataModule.h"

#include <functional>

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr const char* kDataModule = "marlo.sl2.action.system.operate.dataModule";
constexpr const char* kNotify = "marlo.sl2.i32.app.setting.zel.notify";

using BizDataModule = BridgeTest;

TEST_F(BizDataModule, EachRequestRunsItsActionWithPositionTags) {
    struct Case {
        std::function<int32_t()> request;
        int32_t status;
        std::vector<ActionCall> actions;
    };
    const std::vector<Case> cases = {
        {ZelBackupAQPQ, 0, {{kDataModule, {{0, "1"}}}}},
        {[] { return BizRestoreAQPQ(1); }, 0, {{kDataModule, {{0, "2"}, {0x10000, "1"}}}}},
        {[] { return BizRestoreAQPQ(2); }, 0, {{kDataModule, {{0, "2"}, {0x10000, "2"}}}}},
        {[] { return BizRestoreAQPQ(3); }, -1, {}},
        {[] { return BizRestoreAQPQ(-1); }, -1, {}},
        {[] { return BizResetAQPQ(1); }, 0, {{"marlo.sl2.action.sound.setting.reset", {}}}},
        {[] { return BizResetAQPQ(2); },
         0,
         {{"marlo.sl2.action.video.reset.picture.settings", {}}}},
        {[] { return BizResetAQPQ(0); }, 0, {}},
        {BizFactoryReset, 0, {{"marlo.sl2.action.system.factory.reset", {}}}},
        {[] { return BizSendKey("KEY_HOME"); },
         0,
         {{"marlo.sl2.system.action.send.key", {{0, "KEY_HOME"}}}}},
        {[] { return BizSendKey(""); }, 0, {{"marlo.sl2.system.action.send.key", {{0, ""}}}}},
    };
    for (size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(cases[i].request(), cases[i].status) << "case " << i;
        EXPECT_THAT(takeActions(), ElementsAreArray(cases[i].actions)) << "case " << i;
    }
}

TEST_F(BizDataModule, RestoreLogsEveryModeAndFailuresStayInside) {
    BizRestoreAQPQ(3);
    EXPECT_THAT(consoleLines(), ElementsAre("\t<-- BizRestoreAQPQ: mode=3.\n -->\n"));
    tv().setActionHandler(kDataModule, [](const auto&, auto&) { return 7; });
    EXPECT_EQ(BizRestoreAQPQ(2), 0);
}

TEST_F(BizDataModule, SoftwareUpdateNoticeWritesZeroThenFive) {
    tv().set(kNotify, 5);
    EXPECT_EQ(BizActionOTA(), 0);
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{kNotify, 0}, IntWrite{kNotify, 5}));
}

}  // namespace
}  // namespace norvane
