#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "bridge/ZelBizClient.h"
#include "support/SimulatedPlatform.h"
#include "support/StdoutCapture.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::SimulatedPlatform;
using testing_support::splitConsoleLines;
using testing_support::StdoutCapture;

constexpr const char* kVolume = "marlo.sl2.i32.sound.main.volume";
constexpr const char* kCountry = "marlo.sl2.str.basic.settings.country";
constexpr const char* kMissingRoot = "\t<** TV Root Interface is NULL or id is NULL.\n **>\n";

class ZelBizClientTest : public testing::Test {
protected:
    SimulatedPlatform platform;
    StdoutCapture console;

    ZelBizClient& started() {
        ZelBizClient* client = ZelBizClient::getInstance();
        console.take();
        platform.tv().takeJournal();
        return *client;
    }
};

TEST_F(ZelBizClientTest, StartsTheProxyOnceAndLogsTheSequence) {
    unsetenv("LMQR2_UDPHOST");
    ZelBizClient* first = ZelBizClient::getInstance();
    ZelBizClient* second = ZelBizClient::getInstance();

    EXPECT_EQ(first, second);
    EXPECT_EQ(platform.tv().cspDebugInitCalls(), 1);
    EXPECT_EQ(platform.tv().proxyStarts(), 1);
    EXPECT_STREQ(getenv("LMQR2_UDPHOST"), "127.0.0.1:12321");
    EXPECT_THAT(splitConsoleLines(console.take()),
                ElementsAre("\t<-- Start biz proxy successfully\n -->\n",
                            "\t<-- Zel root interface init successfully\n -->\n"));
}

TEST_F(ZelBizClientTest, FailedProxyStartIsNeverRetriedAndEveryPrimitiveFails) {
    platform.tv().setProxyStartFails(true);
    ZelBizClient* client = ZelBizClient::getInstance();
    ASSERT_NE(client, nullptr);
    EXPECT_EQ(console.take(), "\t<** Start biz proxy failed.\n **>\n");

    platform.tv().setProxyStartFails(false);
    EXPECT_EQ(ZelBizClient::getInstance(), client);
    EXPECT_EQ(platform.tv().proxyStarts(), 1);
    EXPECT_EQ(client->setIntValue(kVolume, 10), -1);
    EXPECT_EQ(console.take(), kMissingRoot);
    EXPECT_TRUE(languageNames().empty());
    EXPECT_EQ(platform.tv().connectCalls(), 0);
}

TEST_F(ZelBizClientTest, InterfaceReferenceFailureIsSilentButFatal) {
    platform.tv().setInterfaceReferenceFails(true);
    ZelBizClient* client = ZelBizClient::getInstance();
    EXPECT_EQ(console.take(), "\t<-- Start biz proxy successfully\n -->\n");
    std::string value;
    EXPECT_EQ(client->getStringValue(kCountry, value), -1);
    EXPECT_EQ(console.take(), kMissingRoot);
}

TEST_F(ZelBizClientTest, NullRootInterfaceIsLogged) {
    platform.tv().setRootInterfaceNull(true);
    ZelBizClient* client = ZelBizClient::getInstance();
    EXPECT_THAT(splitConsoleLines(console.take()),
                ElementsAre("\t<-- Start biz proxy successfully\n -->\n",
                            "\t<** Zel root interface init failed\n **>\n"));
    ParameterList reply;
    EXPECT_EQ(client->onAction("marlo.sl2.action.system.factory.reset", reply, ParameterList{}),
              -1);
}

TEST_F(ZelBizClientTest, EmptyOrNullKeyFailsWithoutTouchingTheService) {
    ZelBizClient& client = started();
    const int64_t connects = platform.tv().connectCalls();
    int32_t value = 77;

    EXPECT_EQ(client.setIntValue("", 1), -1);
    client.getIntValue(nullptr, value);
    EXPECT_EQ(client.setStringValue("", "x"), -1);

    EXPECT_EQ(value, 77);
    EXPECT_EQ(platform.tv().connectCalls(), connects);
    EXPECT_THAT(splitConsoleLines(console.take()),
                ElementsAre(kMissingRoot, kMissingRoot, kMissingRoot));
}

TEST_F(ZelBizClientTest, WritesReturnTheHandleStatusAndLogSuccessRegardless) {
    ZelBizClient& client = started();
    platform.tv().setWriteStatus(kVolume, 5);

    EXPECT_EQ(client.setIntValue(kVolume, 7), 5);
    EXPECT_EQ(console.take(), "\t<-- set value of [" + std::string(kVolume) +
                                  "] successfully, value = 7, res = 5.\n -->\n");
    EXPECT_EQ(std::get<int32_t>(platform.tv().get(kVolume)), 0);

    EXPECT_EQ(client.setStringValue(kCountry, "Canada"), 0);
    EXPECT_EQ(console.take(), "\t<-- set value of [" + std::string(kCountry) +
                                  "] successfully, value = Canada, res = 0.\n -->\n");

    const auto journal = platform.tv().takeJournal();
    ASSERT_EQ(journal.size(), 2u);
    EXPECT_EQ(journal[0].key, kVolume);
    EXPECT_EQ(journal[0].status, 5);
    EXPECT_EQ(std::get<std::string>(journal[1].value), "Canada");
}

TEST_F(ZelBizClientTest, ConnectFailureFailsPrimitivesButOnlyNegativeFailsObservers) {
    ZelBizClient& client = started();
    platform.tv().setConnectStatus(kVolume, 3);
    int32_t value = 42;

    client.getIntValue(kVolume, value);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(console.take(), "\t<** TV Root Interface connect [" + std::string(kVolume) +
                                  "] failed, res = 3.\n **>\n");

    struct Quiet : tvmodelapi::ObserverNumericInteger {
        void onDisconnected() override {}
        void onChange(int32_t) override {}
    };
    // Attached observers live as long as the process.
    static Quiet positive;
    EXPECT_EQ(client.connectIntObserver(kVolume, &positive), 0);

    platform.tv().setConnectStatus(kVolume, -4);
    static Quiet negative;
    EXPECT_EQ(client.connectIntObserver(kVolume, &negative), -1);
    EXPECT_EQ(console.take(),
              "\t<** Connect for " + std::string(kVolume) + " failed (res = -4).\n **>\n");
}

TEST_F(ZelBizClientTest, TypedReadsAndActionsReachTheTv) {
    ZelBizClient& client = started();
    platform.tv().set(kVolume, 31);
    platform.tv().set(kCountry, std::string("Usa"));
    platform.tv().set("marlo.sl2.vstr.source.input.name", std::vector<std::string>{"TV", "AVS"});
    platform.tv().set("marlo.sl2.vint32.servicemode.tunerinfo.signallevels",
                      std::vector<int32_t>{64, 12});

    int32_t volume = 0;
    client.getIntValue(kVolume, volume);
    std::string country;
    EXPECT_EQ(client.getStringValue(kCountry, country), 0);
    std::vector<std::string> sources;
    EXPECT_EQ(client.getStringVector("marlo.sl2.vstr.source.input.name", sources), 0);
    std::vector<int32_t> levels;
    EXPECT_EQ(client.getIntVector("marlo.sl2.vint32.servicemode.tunerinfo.signallevels", levels),
              0);

    EXPECT_EQ(volume, 31);
    EXPECT_EQ(country, "Usa");
    EXPECT_THAT(sources, ElementsAre("TV", "AVS"));
    EXPECT_THAT(levels, ElementsAre(64, 12));
    EXPECT_THAT(console.take(), HasSubstr("Get value of [" + std::string(kCountry) +
                                          "] successfully, value = Usa.\n"));

    ParameterList reply;
    EXPECT_EQ(
        client.onAction("marlo.sl2.system.action.send.key", reply, makeParameters({"KEY_HOME"})),
        0);
    EXPECT_EQ(
        console.take(),
        "\t<-- onAction of [marlo.sl2.system.action.send.key] successfully, res = 0.\n -->\n");
    const auto journal = platform.tv().takeJournal();
    ASSERT_EQ(journal.size(), 1u);
    ASSERT_EQ(journal[0].arguments.size(), 1u);
    EXPECT_EQ(journal[0].arguments[0].tag, 0);
    EXPECT_EQ(journal[0].arguments[0].value, "KEY_HOME");
    EXPECT_EQ(platform.tv().openHandles(), 0);
}

TEST_F(ZelBizClientTest, ParametersAreTaggedByPosition) {
    const ParameterList parameters = makeParameters({"a", "b", "c"});
    ASSERT_EQ(parameters.size(), 3u);
    EXPECT_EQ(parameters[0].tag, 0x00000000);
    EXPECT_EQ(parameters[1].tag, 0x00010000);
    EXPECT_EQ(parameters[2].tag, 0x00020000);
    EXPECT_EQ(parameters[2].value, "c");
}

TEST_F(ZelBizClientTest, ObserversHearChangesOnTheServiceThread) {
    ZelBizClient& client = started();
    struct Recorder : tvmodelapi::ObserverString {
        std::vector<std::string> values;
        std::atomic<bool> onCallerThread{false};
        std::thread::id caller = std::this_thread::get_id();
        void onDisconnected() override {}
        void onChange(const std::string& value) override {
            values.push_back(value);
            onCallerThread = onCallerThread || std::this_thread::get_id() == caller;
        }
    };
    static Recorder* recorder = new Recorder;
    const char* key = "marlo.sl2.str.app.setting.zel.session.code";
    ASSERT_EQ(client.connectStringObserver(key, recorder), 0);

    client.setStringValue(key, "sessionDefault");
    platform.tv().set(key, std::string("session0"));
    platform.tv().set(key, std::string("session0"));
    platform.tv().waitUntilDelivered();

    EXPECT_THAT(recorder->values, ElementsAre("sessionDefault", "session0"));
    EXPECT_FALSE(recorder->onCallerThread);
}

TEST_F(ZelBizClientTest, LanguageTableHoldsTheSeventyNames) {
    started();
    const auto& names = languageNames();
    ASSERT_EQ(names.size(), 70u);
    EXPECT_EQ(names.begin()->first, 0);
    EXPECT_EQ(names.rbegin()->first, 69);
    EXPECT_EQ(names.at(0), "German");
    EXPECT_EQ(names.at(1), "English");
    EXPECT_EQ(names.at(19), "Chinese");
    EXPECT_EQ(names.at(42), "Luxembourgish");
    EXPECT_EQ(names.at(46), "Uzbekistan");
    EXPECT_EQ(names.at(55), "Traditional Chinese");
    EXPECT_EQ(names.at(66), "Bengal");
    EXPECT_EQ(names.at(69), "Tamil");
}

}  // namespace
}  // namespace norvane
