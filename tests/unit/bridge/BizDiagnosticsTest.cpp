#include "bridge/BizDiagnostics.h"

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using StringList = std::vector<std::string>;

constexpr const char* kQualities = "marlo.sl2.vint32.servicemode.tunerinfo.signalqualities";
constexpr const char* kLevels = "marlo.sl2.vint32.servicemode.tunerinfo.signallevels";
constexpr const char* kFrequencies = "marlo.sl2.vint32.servicemode.tunerinfo.params.frequencies";
constexpr const char* kModulation = "marlo.sl2.vstr.servicemode.tunerinfo.params.modulation.type";
constexpr const char* kVideo = "marlo.sl2.str.video.diagnosis.info";
constexpr const char* kAudio = "marlo.sl2.str.audio.diagnosis.info";
constexpr const char* kMainPlay = "marlo.sl2.vstr.tvservice.play.main";
constexpr const char* kSources = "marlo.sl2.vstr.source.input.name";

using BizDiagnostics = BridgeTest;

TEST_F(BizDiagnostics, TextReadersShowTheElementsTheyUse) {
    struct Case {
        const char* key;
        tvsim::Value stored;
        std::string (*reader)();
        std::string expected;
    };
    const std::vector<Case> cases = {
        {kQualities, std::vector<int32_t>{57, 3}, BizGetTvSignalQuality, "57 %"},
        {kQualities, std::vector<int32_t>{100}, BizGetTvSignalQuality, "100 %"},
        {kQualities, std::vector<int32_t>{0}, BizGetTvSignalQuality, "Not available"},
        {kQualities, std::vector<int32_t>{}, BizGetTvSignalQuality, "Not available"},
        {kQualities, std::vector<int32_t>{-4}, BizGetTvSignalQuality, "-4 %"},
        {kFrequencies, std::vector<int32_t>{474000}, BizGetChannelFrequency, "474000 kHz"},
        {kFrequencies, std::vector<int32_t>{}, BizGetChannelFrequency, "0 kHz"},
        {kModulation, StringList{"DVB-T2"}, BizGetModulationType, "DVB-T2"},
        {kModulation, StringList{"auto"}, BizGetModulationType, "Not available"},
        {kModulation, StringList{"invalid", "x"}, BizGetModulationType, "Not available"},
        {kModulation, StringList{}, BizGetModulationType, "Not available"},
        {kVideo, StringList{"1280", "720", "p", "50"}, BizGetTvVideoFormat, "1280*720p@50Hz"},
        {kVideo, StringList{"1280", "720", "p"}, BizGetTvVideoFormat, "Not available"},
        {kVideo, StringList{"1", "2", "i", "25", "", "unknown"}, BizGetTvColourFormat,
         "Not available"},
        {kVideo, StringList{"1", "2", "i", "25", "", "YUV420"}, BizGetTvColourFormat, "YUV420"},
        {kVideo, StringList{"1", "2", "i", "25", ""}, BizGetTvColourFormat, "Not available"},
        // Two elements are shown but three are needed.
        {kAudio, StringList{"Dolby", "2.0", ""}, BizGetTvAudioFormat, "Dolby 2.0"},
        {kAudio, StringList{"Dolby", "2.0"}, BizGetTvAudioFormat, "Not available"},
        {kAudio, StringList{"", "", "PCM"}, BizGetTvAudioFormat, "Not available"},
        {kAudio, StringList{"", "2.0", ""}, BizGetTvAudioFormat, " 2.0"},
        // The sixth element is shown but seven are needed.
        {kMainPlay, StringList{"a", "b", "c", "d", "e", "f", "g"}, BizGetMainPlayInfo, "f"},
        {kMainPlay, StringList{"a", "b", "c", "d", "e", "f"}, BizGetMainPlayInfo, ""},
        {"marlo.sl2.str.app.setting.zel.picture.respond", std::string("PASS"),
         BizGetPictureInspectionRespond, "PASS"},
        {"marlo.sl2.str.app.setting.zel.sound.respond", std::string(100000, 'x'),
         BizGetSoundInspectionRespond, std::string(100000, 'x')},
    };
    for (const Case& test : cases) {
        ASSERT_TRUE(tv().set(test.key, test.stored)) << test.key;
        EXPECT_EQ(test.reader(), test.expected) << test.key << " -> " << test.expected;
    }
}

TEST_F(BizDiagnostics, SignalLevelNeedsAKnownModulation) {
    tv().set(kLevels, std::vector<int32_t>{40});
    tv().set(kModulation, StringList{"DVB-C"});
    EXPECT_EQ(BizGetTvSignalLevel(), "40 %");
    tv().set(kModulation, StringList{"auto"});
    EXPECT_EQ(BizGetTvSignalLevel(), "Not available");
    tv().set(kLevels, std::vector<int32_t>{});
    tv().set(kModulation, StringList{"DVB-C"});
    console.take();
    EXPECT_EQ(BizGetTvSignalLevel(), "Not available");
    EXPECT_THAT(consoleLines(), testing::Contains("\t<** BizGetTvSignalLevel error. **>\n"));
}

TEST_F(BizDiagnostics, ListReadersAppendWhatTheyKeep) {
    tv().set(kSources, StringList{"TV", "AVS", "HDMI1", "xHDMI", "hdmi2"});
    tv().set("marlo.sl2.cec.input.names", StringList{"HDMI1-BD", "AVS"});
    StringList sources{"kept"}, ports{"kept"}, cec{"kept"};
    EXPECT_EQ(BizGetVStrSourceList(sources), 0);
    EXPECT_EQ(BizGetVStrHDMIPortNameList(ports), 0);
    EXPECT_EQ(BizGetVStrCecInputNames(cec), 0);
    EXPECT_THAT(sources, ElementsAre("kept", "TV", "AV", "HDMI1", "xHDMI", "hdmi2"));
    EXPECT_THAT(ports, ElementsAre("kept", "HDMI1", "xHDMI"));
    EXPECT_THAT(cec, ElementsAre("kept", "HDMI1-BD", "AVS"));

    tv().set("marlo.sl2.vstr.bluetooth.device.list", StringList{"Speaker"});
    StringList devices{"kept"};
    EXPECT_EQ(BizGetVStrBTDeviceList(devices), 0);
    EXPECT_THAT(devices, ElementsAre("kept", "Speaker"));
    tv().setConnectStatus("marlo.sl2.vstr.bluetooth.selfdiagnose.info", 6);
    StringList diagnosis;
    EXPECT_EQ(BizGetVStrBTSelfDiagnoseInfo(diagnosis), -1);
    EXPECT_THAT(diagnosis, IsEmpty());
}

TEST_F(BizDiagnostics, HdcpKeyNamesComeFromTheirFiles) {
    StringList missing;
    BizGetVStrHdcpKeyList(missing);
    EXPECT_THAT(missing, ElementsAre("HDCP1.4 key", "NULL", "HDCP2.2 key", "NULL"));

    testing_support::writeTvFile("/certificate/keyname/hdcp1.name", "");
    testing_support::writeTvFile("/certificate/keyname/hdcp2.name", "KEY22\n");
    StringList present;
    BizGetVStrHdcpKeyList(present);
    EXPECT_THAT(present, ElementsAre("HDCP1.4 key", "NULL", "HDCP2.2 key", "KEY22\n"));
}

TEST_F(BizDiagnostics, NetworkLinkStatusRefreshesThenWaitsASecond) {
    tv().set("marlo.sl2.i32.network.enum.networking", 2);
    const timespec before = tv().monotonicNow();
    EXPECT_EQ(BizGetNetworkLinkStatus(), 2);
    const timespec after = tv().monotonicNow();
    EXPECT_GE(after.tv_sec - before.tv_sec + (after.tv_nsec - before.tv_nsec) / 1e9, 1.0);
    EXPECT_THAT(takeActions(),
                ElementsAre(ActionCall{"marlo.sl2.action.network.remotecontrol.getnetinfo", {}}));
    tv().set("marlo.sl2.i32.local.network.available", 1);
    EXPECT_EQ(BizGetLocalNetworkAvailable(), 1);
}

}  // namespace
}  // namespace norvane
