#include <gtest/gtest.h>

#include "zel/core/DeviceValues.h"
#include "zel/sv/SupportViewManager.h"
#include "zelsim/HostSim.h"

namespace {

using Zel::Sv::SupportViewManager;

class HostIdentity : public ::testing::Test {
protected:
    void SetUp() override { zelsim::reset(); }
};

TEST_F(HostIdentity, SpeedTestReportsSpeedsOnlyWhenItSucceeds) {
    double up = -1;
    double down = -1;
    EXPECT_EQ(SupportViewManager::Instance().runSpeedTest(up, down), 0);
    EXPECT_EQ(up, 18.5);
    EXPECT_EQ(down, 94.25);

    zelsim::Identity failing;
    failing.speedResult = 7;
    zelsim::setIdentity(failing);
    up = -1;
    down = -2;
    EXPECT_EQ(SupportViewManager::Instance().runSpeedTest(up, down), 7);
    EXPECT_EQ(up, -1);
    EXPECT_EQ(down, -2);
}

TEST(HostDeviceValues, StartWithTheAgentDefaultsUntilAPlugInFillsThemIn) {
    struct PlugInValues : Zel::Core::DeviceValues {
        PlugInValues() : DeviceValues("tv") {}
        void fill() { deviceModel_ = "M1"; }
    };
    PlugInValues values;
    EXPECT_EQ(values.getDeviceType(), "tv");
    EXPECT_EQ(values.getDeviceModel(), "unknown-model");
    EXPECT_EQ(values.getPlatform(), "unknown-platform");
    values.fill();
    EXPECT_EQ(values.getDeviceModel(), "M1");
}

}  // namespace
