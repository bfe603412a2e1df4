// Start-up through the process framework, with its faults.
#include <gtest/gtest.h>

#include "TvTestSupport.h"
#include "csp/cspDebug.h"

namespace {

using tvtest::kSettingsServiceName;
using tvtest::RootInterface;

using TvFramework = tvtest::TvTest;

TEST_F(TvFramework, StartUpReachesTheSettingsService) {
    cspDebugInit();
    EXPECT_EQ(frame::Process::getInstance().startAppMembersSync(CreateBizProxy), 0);
    boost::shared_ptr<frame::Interface> reference;
    ASSERT_EQ(frame::Process::getInstance().getInterfaceReference(reference, kSettingsServiceName),
              0);
    ASSERT_TRUE(reference);
    RootInterface* service = reference->get<RootInterface>();
    ASSERT_NE(service, nullptr);
    tvtest::ValueHandle* handle = nullptr;
    EXPECT_EQ(service->connect("marlo.sl2.i32.language.osd", nullptr, handle), 0);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(tv().cspDebugInitCalls(), 1);
    EXPECT_EQ(tv().proxyStarts(), 1);
}

TEST_F(TvFramework, ProxyStartFault) {
    tv().setProxyStartFails(true);
    EXPECT_NE(frame::Process::getInstance().startAppMembersSync(CreateBizProxy), 0);
    EXPECT_EQ(tv().proxyStarts(), 1);
    tv().setProxyStartFails(false);
    EXPECT_EQ(frame::Process::getInstance().startAppMembersSync(CreateBizProxy), 0);
}

TEST_F(TvFramework, InterfaceReferenceFaultAndUnknownNames) {
    boost::shared_ptr<frame::Interface> reference;
    EXPECT_NE(frame::Process::getInstance().getInterfaceReference(reference, "no.such.Interface"),
              0);
    tv().setInterfaceReferenceFails(true);
    EXPECT_NE(frame::Process::getInstance().getInterfaceReference(reference, kSettingsServiceName),
              0);
    EXPECT_FALSE(reference);
}

TEST_F(TvFramework, NullRootInterface) {
    tv().setRootInterfaceNull(true);
    boost::shared_ptr<frame::Interface> reference;
    ASSERT_EQ(frame::Process::getInstance().getInterfaceReference(reference, kSettingsServiceName),
              0);
    EXPECT_EQ(reference->get<RootInterface>(), nullptr);
}

TEST_F(TvFramework, ResetClearsFaultsAndCounters) {
    cspDebugInit();
    tv().setProxyStartFails(true);
    tv().setRootInterfaceNull(true);
    tv().reset();
    EXPECT_EQ(tv().cspDebugInitCalls(), 0);
    EXPECT_NE(tvtest::settingsService(), nullptr);
}

}  // namespace
