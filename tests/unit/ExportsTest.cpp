#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "DeviceNvValues.h"
#include "NorvaneExports.h"
#include "support/SimulatedPlatform.h"

namespace {

using testing_support::SimulatedPlatform;

TEST(Exports, AnswerWithoutStartUp) {
    EXPECT_EQ(getVideoWidthExt(), 1920);
    EXPECT_EQ(getVideoHeightExt(), 1080);
    EXPECT_EQ(getGstreamerPathExt(), "/3rd/ULI/lib/");
    EXPECT_EQ(getGstreamerPathExt(), "/3rd/ULI/lib/");
    std::vector<unsigned char> frame(1920 * 1080 * 4);
    EXPECT_EQ(fillVideoBufferExt(frame.data(), static_cast<uint32_t>(frame.size())), -1);
    EXPECT_EQ(GetZelPassword(), "");
}

TEST(Exports, EachCommandListIsNewAndIndependent) {
    const std::vector<Zel::Sv::CommandBase*> first = createCommandsExt();
    const std::vector<Zel::Sv::CommandBase*> second = createCommandsExt();
    ASSERT_EQ(first.size(), second.size());
    for (size_t i = 0; i < first.size(); ++i) {
        EXPECT_NE(first[i], second[i]);
        EXPECT_EQ(first[i]->getId(), second[i]->getId());
    }
    for (Zel::Sv::CommandBase* command : first)
        delete command;
    for (Zel::Sv::CommandBase* command : second)
        delete command;
}

TEST(Exports, InitializeStartsTheClientAndResetsTheSessionCode) {
    SimulatedPlatform platform;
    platform.tv().set("marlo.sl2.str.app.setting.zel.session.code", std::string("123456"));
    initialize();
    const auto journal = platform.tv().takeJournal();
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ(journal.back().key, "marlo.sl2.str.app.setting.zel.session.code");
    EXPECT_EQ(std::get<std::string>(journal.back().value), "sessionDefault");
    EXPECT_EQ(platform.tv().proxyStarts(), 1);
}

TEST(Exports, InitializeCarriesOnWhenTheTvIsUnreachable) {
    SimulatedPlatform platform;
    platform.tv().setProxyStartFails(true);
    initialize();
    EXPECT_TRUE(platform.tv().takeJournal().empty());
    // The bridge answers what it could read: nothing.
    std::unique_ptr<Zel::Core::DeviceValues> values(createDeviceValuesExt("tv"));
    EXPECT_EQ(values->getPlatform(), "");
    EXPECT_EQ(values->getDeviceModel(), "0004");
}

TEST(DeviceValues, EmptyTableGivesTheStandInValues) {
    std::unique_ptr<Zel::Core::DeviceValues> values(createDeviceValuesExt("television"));
    EXPECT_EQ(values->getDeviceType(), "television");
    EXPECT_EQ(values->getDeviceModel(), "0002");
    EXPECT_EQ(values->getPlatform(), "Mstar6886");
}

int modelQueries = 0;

TEST(DeviceValues, EveryObjectAsksTheTvAgain) {
    norvane::NvRegisterGetZelSubModel([] {
        ++modelQueries;
        return std::string("0004");
    });
    norvane::NvRegisterGetPlatformMode([] { return std::string("MT9653"); });
    std::unique_ptr<Zel::Core::DeviceValues> first(createDeviceValuesExt("a"));
    std::unique_ptr<Zel::Core::DeviceValues> second(createDeviceValuesExt("b"));
    EXPECT_EQ(modelQueries, 2);
    EXPECT_EQ(second->getDeviceModel(), "0004");
    EXPECT_EQ(second->getPlatform(), "MT9653");
}

}  // namespace
