#include "bridge/BizSound.h"

#include <cstdio>

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;

constexpr const char* kAcr = "marlo.sl2.i32.app.setting.enhanced.acr.state";
constexpr const char* kSoundMode = "marlo.sl2.i32.sound.enum.adjust";
constexpr const char* kConfigFile = "/nvdata/model/config/config.ini";

using BizSound = BridgeTest;

TEST_F(BizSound, TablesTranslateBothWays) {
    expectTranslatesBothWays({"marlo.sl2.i32.sound.main.mute",
                              BizGetMuteStatus,
                              BizSetMuteStatus,
                              0,
                              {"Unmute", "Mute"},
                              "Mute",
                              0});
    expectTranslatesBothWays({"marlo.sl2.i32.sound.headphone.mode",
                              BizGetHeadphoneMode,
                              BizSetHeadphoneMode,
                              0,
                              {"Headphone with Speakers", "Headphone Only"},
                              "Headphone Only",
                              1});
    expectTranslatesBothWays({"marlo.sl2.i32.sound.speaker.arc.mode",
                              BizGetAudioOutput,
                              BizSetAudioOutput,
                              1,
                              {"TV Speaker", "ARC", "SPDIF Only", "BT Sound Bar"},
                              "TV Speaker",
                              1});
    expectTranslatesBothWays({kSoundMode,
                              BizGetSoundMode,
                              BizSetSoundMode,
                              0,
                              {"Standard", "Speech", "Late Night", "Music", "Theater", "Sports"},
                              "Standard",
                              0});
    BizSetMuteStatus("mute");
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{"marlo.sl2.i32.sound.main.mute", 0}));
}

TEST_F(BizSound, SoundModeLeavesEnhancedAcrBeforeWriting) {
    tv().set(kAcr, 2);
    EXPECT_EQ(BizGetSoundMode(), "Enhanced(ACR)");
    BizSetSoundMode("Music");
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{kAcr, 1}, IntWrite{kSoundMode, 3}));
    BizSetSoundMode("Enhanced(ACR)");
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{kAcr, 2}));
}

TEST_F(BizSound, SoundModeListPutsTheaterBeforeMusicAndOffersAcrWhenAvailable) {
    tv().set(kSoundMode, 3);
    for (const int32_t acr : {0, 1, 2, 3}) {
        tv().set(kAcr, acr);
        std::vector<std::string> list;
        BizGetVStrSoundModeList(list);
        EXPECT_EQ(joined(list),
                  std::string("Standard, Speech, Late Night, Theater, Music, Sports") +
                      (acr == 1 || acr == 2 ? ", Enhanced(ACR)" : ""));
        EXPECT_EQ(BizGetSoundMode(), acr == 2 ? "Enhanced(ACR)" : "Music");
    }
}

TEST_F(BizSound, AudioOutputListOffersTheSoundBarOnlyWhenTheModelSupportsIt) {
    const std::vector<std::pair<std::string, const char*>> configurations = {
        {"[System]\nBluetoothSupport=1\n", "TV Speaker, ARC, SPDIF Only, BT Sound Bar"},
        {"[System]\nBluetoothSupport=0\n", "TV Speaker, ARC, SPDIF Only"},
        {"[System]\nBluetoothSupport=2\n", "TV Speaker, ARC, SPDIF Only"},
        {"[Audio]\nBluetoothSupport=1\n", "TV Speaker, ARC, SPDIF Only"},
    };
    for (const auto& [configuration, expected] : configurations) {
        testing_support::writeTvFile(kConfigFile, configuration);
        std::vector<std::string> list;
        EXPECT_EQ(BizGetVStrAudioOutputList(list), 0);
        EXPECT_EQ(joined(list), expected) << configuration;
    }
    console.take();
    std::remove(tv().resolvePath(kConfigFile).c_str());
    std::vector<std::string> list;
    BizGetVStrAudioOutputList(list);
    EXPECT_EQ(joined(list), "TV Speaker, ARC, SPDIF Only");
    EXPECT_THAT(consoleLines(), ElementsAre("\t<** BluetoothSupport flag get error **>\n"));
}

TEST_F(BizSound, ArcPortAndInspection) {
    tv().set("marlo.sl2.i32.arc.port", 2);
    EXPECT_EQ(BizGetArcPortName(), "HDMI2");
    tv().set("marlo.sl2.i32.arc.port", 0);
    EXPECT_EQ(BizGetArcPortName(), "");

    // device present, amplifier mode -> result, details
    const std::vector<std::pair<std::pair<int32_t, int32_t>, std::string>> cases = {
        {{0, 1}, "NA No device connect."},         {{0, 0}, "NA No device connect."},
        {{1, 1}, "OK Picture Inspection PASSED."}, {{1, 0}, "NG ARC device error."},
        {{-1, 2}, "NG ARC device error."},
    };
    for (const auto& [state, expected] : cases) {
        tv().set("marlo.sl2.i32.sound.arcdev.exist", state.first);
        tv().set("marlo.sl2.i32.cec.amp.audiomode", state.second);
        std::string result = "old", details = "old";
        EXPECT_EQ(BizArcInspect(result, details), 0);
        EXPECT_EQ(result + " " + details, expected);
    }
}

TEST_F(BizSound, YesNoReadersAndHbbTv) {
    tv().set("marlo.sl2.i32.sound.bluetooth.device.type", 2);
    tv().set("marlo.sl2.i32.sound.headphone.exist", 1);
    tv().set("marlo.sl2.i32.cec.functionality", -1);
    EXPECT_FALSE(BizIsBTSoundBarType());
    EXPECT_TRUE(BizIsHeadphoneConnected());
    EXPECT_TRUE(BizIsCecEnabled());
    tv().set("marlo.sl2.i32.sound.headphone.exist", 2);
    EXPECT_FALSE(BizIsHeadphoneConnected()) << "only 1 means plugged in";
    EXPECT_THAT(consoleLines(), testing::Contains("\t<-- lipsync is -1.\n -->\n"));

    BizSetHbbTVState(7);
    BizSetHbbTVState(0);
    const char* hbbtv = "marlo.sl2.i32.basic.settings.enum.dvb.mode.hbbtv";
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{hbbtv, 1}, IntWrite{hbbtv, 0}));
}

}  // namespace
}  // namespace norvane
