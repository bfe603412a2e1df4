// With the settings service dead every bridge function still answers: reads count as 0 or keep
// their starting text, requests answer 0, and nothing reaches the TV.
#include "bridge/BizDataModule.h"
#include "bridge/BizDiagnostics.h"
#include "bridge/BizIdentity.h"
#include "bridge/BizPicture.h"
#include "bridge/BizSound.h"

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using BizDeadService = DeadServiceTest;

TEST_F(BizDeadService, TextReadersFallBackToTheirDefaults) {
    const std::vector<std::pair<std::string (*)(), std::string>> cases = {
        {BizGetPictureMode, "Vivid"},
        {BizGetColourTemperature, "High"},
        {BizGetTvHDRType, "No"},
        {BizGetMuteStatus, "Unmute"},
        {BizGetHeadphoneMode, "Headphone with Speakers"},
        {BizGetAudioOutput, "TV Speaker"},
        {BizGetSoundMode, "Standard"},
        {BizGetArcPortName, ""},
        {BizGetEsn, "NULL"},
        {BizGetSerialNumber, "Test_SN"},
        {BizGetBrand, "Norvane"},
        {BizGetSourceName, "TV"},
        {BizGetZelSubModel, "0004"},
        {BizGetManufacturedDate, "unkown"},
        {BizGetInitialPowerOnDate, "unkown"},
        {BizGetRegion, "NA"},
        {BizGetFactoryMode, "User Mode"},
        {BizGetSystemCountry, ""},
        {BizGetZelModel, ""},
        {BizGetTvSignalQuality, "Not available"},
        {BizGetTvSignalLevel, "Not available"},
        {BizGetChannelFrequency, "0 kHz"},
        {BizGetTvVideoFormat, "Not available"},
        {BizGetTvAudioFormat, "Not available"},
        {BizGetTvColourFormat, "Not available"},
        {BizGetMainPlayInfo, ""},
    };
    for (const auto& [reader, expected] : cases) {
        EXPECT_EQ(reader(), expected);
    }
    // Only positions 0, 2, 4 and 6 move away from the seed.
    EXPECT_EQ(BizGetZelPassword(), "Tk577L7_Zb3x-9mNp");
    console.take();
    BizGetBrand();
    EXPECT_THAT(consoleLines(),
                ElementsAre("\t<** TV Root Interface is NULL or id is NULL.\n **>\n",
                            "\t<** Get brand error. **>\n"));
}

TEST_F(BizDeadService, WritersAndRequestsAnswerZeroUnlessTheyReturnTheStatus) {
    EXPECT_EQ(BizSetColourTemperature("Low"), -1);
    EXPECT_EQ(BizSetColourSaturation(40), -1);
    const std::vector<std::function<int32_t()>> requests = {
        [] { return BizSetPictureMode("Game"); },
        [] { return BizSetSource("HDMI1"); },
        [] { return BizSetSoundMode("Music"); },
        [] { return BizSetVolume(5); },
        [] { return BizRestoreAQPQ(1); },
        ZelBackupAQPQ,
        BizFactoryReset,
        BizActionOTA,
        BizGetNetworkLinkStatus,
    };
    for (const auto& request : requests) {
        EXPECT_EQ(request(), 0);
    }
    std::vector<std::string> modes, sources, devices;
    BizGetVStrPictureModeList(modes);
    EXPECT_THAT(modes,
                ElementsAre("Vivid", "Standard", "Energy Saving", "Theater", "Sports", "CALIBRTED"))
        << "an unreadable source counts as TV";
    EXPECT_EQ(BizGetVStrSourceList(sources), 0);
    EXPECT_EQ(BizGetVStrBTDeviceList(devices), -1);
    EXPECT_THAT(sources, IsEmpty());
    EXPECT_THAT(tv().takeJournal(), IsEmpty());
}

}  // namespace
}  // namespace norvane
