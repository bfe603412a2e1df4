// The settings bridge's pauses, seen on held simulated time.
#include <future>

#include "BridgeTest.h"
#include "bridge/BizDiagnostics.h"
#include "support/HeldTime.h"

namespace norvane {
namespace {

using testing::EndsWith;
using testing_support::finishes;
using testing_support::HeldTime;

constexpr const char* kNetworking = "marlo.sl2.i32.network.enum.networking";

TEST(ClientTiming, StartPausesThreeTenthsOfASecond) {
    testing_support::SimulatedPlatform platform;
    testing_support::StdoutCapture console;
    HeldTime time;
    std::future<ZelBizClient*> started = time.inBackground(ZelBizClient::getInstance);
    ASSERT_TRUE(time.awaitWakeupAt(0.3));
    time.advanceTo(0.3);
    ASSERT_TRUE(finishes(started));
    EXPECT_THAT(console.take(), EndsWith("\t<-- Zel root interface init successfully\n -->\n"));
}

using BridgeTiming = BridgeTest;

TEST_F(BridgeTiming, NetworkLinkStatusIsReadOneSecondAfterTheRefresh) {
    HeldTime time;
    tv().set(kNetworking, 2);
    std::future<int32_t> status = time.inBackground(BizGetNetworkLinkStatus);
    ASSERT_TRUE(time.awaitWakeupAt(1));
    tv().set(kNetworking, 1);  // the middleware's refresh lands during the wait
    time.advanceTo(1);
    ASSERT_TRUE(finishes(status));
    EXPECT_EQ(status.get(), 1);
}

}  // namespace
}  // namespace norvane
