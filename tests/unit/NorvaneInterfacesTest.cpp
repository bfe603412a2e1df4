#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "support/SimulatedPlatform.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing_support::SimulatedPlatform;

// With nothing registered every wrapper answers its stand-in value.
TEST(NorvaneInterfacesEmptyTable, TextQueriesAnswerTheirStandIns) {
    const std::vector<std::pair<std::function<std::string()>, std::string>> cases = {
        {NvGetSystemCountry, "Test Country"},
        {NvGetPlatformMode, "Mstar6886"},
        {NvGetSystemLanguage, "Test Language"},
        {NvGetFactoryMode, "User Mode"},
        {NvGetEsn, "Netflix Key Value"},
        {NvGetCiPlusKeyName, "CI+ Key Value"},
        {NvGetEdidInfo, "EDID Info Value"},
        {NvGetEthernetMac, "unknown"},
        {NvGetSerialNumber, "Test_ID"},
        {NvGetZelSubModel, "0002"},
        {NvGetSwVersion, "Norvane_Softversion"},
        {NvGetHeadphoneMode, "Headphone with Speakers"},
        {NvGetAudioOutput, "TV Speaker"},
        {NvGetPictureInspectionRespond, "No Respones"},
        {NvGetSoundInspectionRespond, "No Respones"},
        {NvGetRegion, "EU"},
        {NvGetZelPassword, ""},
        {NvGetPictureMode, ""},
        {NvGetBrand, ""},
        {[] {
             return NvGenerateZelPassword({"serial", "mac"});
         },
         ""},
        {[] { return NvGetReadFilePath("Log0", 0); }, ""},
    };
    for (const auto& [query, expected] : cases) {
        EXPECT_EQ(query(), expected);
    }
}

TEST(NorvaneInterfacesEmptyTable, NumericQueriesAndActionsAnswerTheirStandIns) {
    std::vector<unsigned char> frame(16);
    const std::vector<std::pair<std::function<int32_t()>, int32_t>> cases = {
        {NvGetVolume, 15},
        {NvGetLipSync, 6},
        {NvGetColourSaturation, 50},
        {NvGetAntenna2Signal, 50},
        {NvIsCecEnabled, 1},
        {NvGetSpdifValue, 0},
        {NvGetNetworkLinkStatus, 0},
        {NvGetEnhancedACRState, 0},
        {NvGetTimeOutFlag, 0},
        {NvGetOverscan, 0},
        {NvIsHeadphoneConnected, 0},
        {[] { return NvIsMacPrivacyRegion("NA"); }, 1},
        {[&] { return NvFillVideoFrameBuffer(frame.data(), 16); }, -1},
        {[] { return NvRestoreAQPQ(2); }, 0},
        {[] { return NvBackupReadFile("Log0"); }, 0},
        {NvFactoryReset, 0},
    };
    for (const auto& [query, expected] : cases) {
        EXPECT_EQ(query(), expected);
    }
    std::string result, details;
    EXPECT_EQ(NvArcCheck(result, details), 0);
    EXPECT_EQ(result, "N/A");
    EXPECT_EQ(details, "No Arc device.");
}

TEST(NorvaneInterfacesEmptyTable, ListQueriesAppendTheirTestLists) {
    std::vector<std::string> cec{"kept"};
    EXPECT_EQ(NvGetVStrCecInputNames(cec), 0);
    EXPECT_THAT(cec, ElementsAre("kept", "HDMI1-BD", "HDMI1-BSP", "HDMI1-AMP", "HDMI4-BD"));

    std::vector<std::string> ports;
    NvGetVStrHDMIPortNameList(ports);
    EXPECT_THAT(ports, ElementsAre("HDMI1", "HDMI2", "HDMI3", "HDMI4"));

    std::vector<std::string> sources;
    NvGetVStrSourceList(sources);
    EXPECT_EQ(sources.size() % 2, 0u) << "sources come as name and alias pairs";

    std::vector<std::string> hdcp;
    NvGetVStrHdcpKeyList(hdcp);
    ASSERT_EQ(hdcp.size(), 4u);
    EXPECT_EQ(hdcp[0], "HDCP1.4 key");
    EXPECT_EQ(hdcp[2], "HDCP2.2 key");
}

TEST(NorvaneInterfacesEmptyTable, KeySendingLogsTheStubLine) {
    SimulatedPlatform platform;
    EXPECT_EQ(NvKeyEventProc("KEY_HOME"), 0);
    EXPECT_THAT(platform.takeHostLogTexts(), ElementsAre("[Stub] Norvane Key KEY_HOME pressed.\n"));
}

// Registered functions are called with the wrapper's arguments.
int32_t lastVolume = -1;
std::string lastLabel;
std::vector<std::string> lastParts;

TEST(NorvaneInterfacesRegistered, WrappersForwardArgumentsAndResults) {
    NvRegisterSetVolume([](int32_t volume) {
        lastVolume = volume;
        return -1;
    });
    NvRegisterSetPictureMode([](const std::string& label) {
        lastLabel = label;
        return 7;
    });
    NvRegisterGetVolume([] { return 88; });
    NvRegisterGetRegion([] { return std::string("NA"); });
    NvRegisterGenerateZelPassword([](const std::vector<std::string>& parts) {
        lastParts = parts;
        return std::string("generated");
    });
    NvRegisterRestoreAQPQ([](int32_t mode) { return mode == 3 ? -1 : 0; });
    NvRegisterGetVStrCecInputNames([](std::vector<std::string>& list) {
        list.push_back("HDMI2-TV");
        return -1;
    });

    EXPECT_EQ(NvSetVolume(33), 0) << "writers never report failure";
    EXPECT_EQ(lastVolume, 33);
    EXPECT_EQ(NvSetPictureMode("Vivid"), 0);
    EXPECT_EQ(lastLabel, "Vivid");
    EXPECT_EQ(NvGetVolume(), 88);
    EXPECT_EQ(NvGetRegion(), "NA");
    EXPECT_EQ(NvGenerateZelPassword({"a", "b"}), "generated");
    EXPECT_THAT(lastParts, ElementsAre("a", "b"));
    EXPECT_EQ(NvRestoreAQPQ(3), -1) << "actions pass their status on";
    std::vector<std::string> cec;
    EXPECT_EQ(NvGetVStrCecInputNames(cec), -1);
    EXPECT_THAT(cec, ElementsAre("HDMI2-TV"));
}

// The remote-button map translates agent names into TV key names.
std::vector<std::string> sentKeys;

class RemoteButtonMapTest : public testing::Test {
protected:
    SimulatedPlatform platform;
    void SetUp() override {
        NvZelLinuxAppInit();
        NvRegisterKeyEventProc([](const std::string& key) {
            sentKeys.push_back(key);
            return 0;
        });
        platform.takeHostLogTexts();
    }
};

TEST_F(RemoteButtonMapTest, KnownButtonsSendTheirTvKeys) {
    for (const char* button :
         {"ENTER", "NUM0", "VOL_MUTE", "FAST_FORWARD", "KEY_PVR", "KEY_LITV", "KEY_FREEVIEW",
          "KEY_AUDIO_ONLY", "KEY_MEIDA", "KEY_MEDIA", "GUIDE", "KEY_EPG", "KEY_BROWSER"}) {
        ZelKeyEventProc(button);
    }
    EXPECT_THAT(sentKeys, ElementsAre("KEY_OK", "KEY_0", "KEY_MUTE", "KEY_FASTFORWARD",
                                      "KEY_RECORD", "KEY_TV", "KEY_FVP", "KEY_AUDIO", "KEY_MIDEA",
                                      "KEY_MIDEA", "KEY_EPG", "KEY_EPG", "KEY_BROWSER"));
}

TEST_F(RemoteButtonMapTest, UnknownOrLowerCaseNamesSendNothing) {
    for (const char* button : {"enter", "KEY_CHANNEL_UP", "KEY_INFO", "", "ENTER "}) {
        ZelKeyEventProc(button);
    }
    EXPECT_TRUE(sentKeys.empty());
    const auto texts = platform.takeHostLogTexts();
    ASSERT_EQ(texts.size(), 10u);
    EXPECT_EQ(texts[0], "Zel Remote Button enter pressed.");
    EXPECT_EQ(texts[1], "Error! Can not find Norvane Button.");
}

TEST(RemoteButtonMapStub, KnownButtonWithoutSenderLogsThreeLines) {
    SimulatedPlatform platform;
    NvZelLinuxAppInit();
    platform.takeHostLogTexts();
    ZelKeyEventProc("CHANNEL_UP");
    EXPECT_THAT(platform.takeHostLogTexts(),
                ElementsAre("Zel Remote Button CHANNEL_UP pressed.",
                            "Norvane Button KEY_CHANNEL_UP pressed.",
                            "[Stub] Norvane Key KEY_CHANNEL_UP pressed.\n"));
}

}  // namespace
}  // namespace norvane
