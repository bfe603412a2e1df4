#include "bridge/BizPicture.h"

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;

constexpr const char* kMode = "marlo.sl2.i32.video.enum.picture.adjustment";
constexpr const char* kHdrFlag = "marlo.sl2.i32.video.hdr.flag";
constexpr const char* kAcr = "marlo.sl2.i32.app.setting.enhanced.acr.state";
constexpr const char* kNotify = "marlo.sl2.i32.app.setting.zel.notify";
constexpr const char* kSetModeAction = "marlo.sl2.action.video.set.picture.adjustment";

using BizPicture = BridgeTest;

TEST_F(BizPicture, ModeLabelsFollowTheHdrFlag) {
    // Columns: HDR flag 0, 1, 2, then 3 and -1 (any other kind); rows: mode 0 to 6, 7, -5.
    // Mode 7 reads the last row as every number past it does: whether the row bound is 6 or 7
    // cannot be seen.
    const std::vector<std::string> rows = {
        "Vivid, HDR Vivid, Dolby Vision Custom, HDR Vivid, HDR Vivid",
        "Standard, HDR Standard, Dolby Vision Custom, HDR Standard, HDR Standard",
        "Energy Saving, HDR Energy Saving, Dolby Vision Dark, Energy Saving, Energy Saving",
        "Theater, HDR Theater, Dolby Vision Bright, HDR Theater, HDR Theater",
        "Game, HDR Game, Dolby Vision Custom, HDR Standard, HDR Standard",
        "Sports, HDR Sports, Dolby Vision Custom, HDR Sports, HDR Sports",
        "CALIBRTED, HDR CALIBRTED, Dolby Vision Custom, HDR Standard, HDR Standard",
        "Vivid, HDR Vivid, Dolby Vision Custom, HDR Standard, HDR Standard",
        "Vivid, HDR Vivid, Dolby Vision Custom, HDR Standard, HDR Standard",
    };
    const int32_t modes[] = {0, 1, 2, 3, 4, 5, 6, 7, -5};
    for (size_t row = 0; row < rows.size(); ++row) {
        tv().set(kMode, modes[row]);
        std::vector<std::string> labels;
        for (const int32_t flag : {0, 1, 2, 3, -1}) {
            tv().set(kHdrFlag, flag);
            labels.push_back(BizGetPictureMode());
        }
        EXPECT_EQ(joined(labels), rows[row]) << "mode " << modes[row];
    }
    tv().set(kAcr, 2);
    EXPECT_EQ(BizGetPictureMode(), "Enhanced(ACR)");
}

TEST_F(BizPicture, SettingAModeSendsItsNumberAfterLeavingEnhancedAcr) {
    const std::vector<std::vector<std::string>> labelsByNumber = {
        {"Vivid", "HDR Vivid"},
        {"Standard", "HDR Standard", "Dolby Vision Custom"},
        {"Energy Saving", "HDR Energy Saving", "Dolby Vision Dark"},
        {"Theater", "HDR Theater", "Dolby Vision Bright", "vivid", "Enhanced"},
        {"Game", "HDR Game"},
        {"Sports", "HDR Sports"},
        {"CALIBRTED", "HDR CALIBRTED"},
    };
    for (size_t number = 0; number < labelsByNumber.size(); ++number) {
        for (const std::string& label : labelsByNumber[number]) {
            EXPECT_EQ(BizSetPictureMode(label), 0);
            const std::string sent = std::to_string(number);
            EXPECT_THAT(takeActions(),
                        ElementsAre(ActionCall{kSetModeAction,
                                               {{0, sent}, {0x10000, "1"}, {0x20000, "1"}}}))
                << label;
        }
    }
    tv().set(kAcr, 2);
    BizSetPictureMode("Game");
    const auto journal = tv().takeJournal();
    ASSERT_EQ(journal.size(), 2u);
    EXPECT_EQ(journal[0].key, kAcr);
    EXPECT_EQ(std::get<int32_t>(journal[0].value), 1);
    EXPECT_EQ(journal[1].key, kSetModeAction);

    BizSetPictureMode("Enhanced(ACR)");
    EXPECT_THAT(tv().takeJournal(), testing::SizeIs(1));
    EXPECT_EQ(std::get<int32_t>(tv().get(kAcr)), 2);
}

TEST_F(BizPicture, EnumerationsTranslateBothWays) {
    expectTranslatesBothWays({"marlo.sl2.i32.video.enum.colour.temperature",
                              BizGetColourTemperature,
                              BizSetColourTemperature,
                              0,
                              {"High", "Medium", "Low", "Mid-Low"},
                              "Low",
                              2});
    expectTranslatesBothWays({"marlo.sl2.i32.video.dynamic.contrast",
                              BizGetAdaptiveContrast,
                              BizSetAdaptiveContrast,
                              0,
                              {"Off", "Low", "Medium", "High"},
                              "High",
                              3});
    expectTranslatesBothWays({"marlo.sl2.i32.video.enum.memc",
                              BizGetUltraSmoothMotion,
                              BizSetUltraSmoothMotion,
                              0,
                              {"Off", "Custom", "Film", "Clear", "Standard", "Smooth"},
                              "Smooth",
                              5});
    expectTranslatesBothWays({"marlo.sl2.i32.video.enum.dnc",
                              BizGetNoiseReduction,
                              BizSetNoiseReduction,
                              0,
                              {"Off", "Low", "Medium", "High"},
                              "Off",
                              0});
    tv().setWriteStatus("marlo.sl2.i32.video.enum.dnc", 9);
    EXPECT_EQ(BizSetNoiseReduction("Low"), 9) << "the write status is passed on";
    for (const int32_t flag : {0, 1, 2, 3, -1}) {
        tv().set(kHdrFlag, flag);
        EXPECT_EQ(BizGetTvHDRType(), flag == 1 ? "Yes" : "No") << "only plain HDR, flag " << flag;
    }
}

TEST_F(BizPicture, SourceSwitchAndInspectionsWriteZeroThenTheirCode) {
    const std::vector<std::pair<std::string, int32_t>> sources = {
        {"TV", 7},     {"AV", 8},     {"HDMI1", 9}, {"HDMI2", 10},
        {"HDMI3", 11}, {"HDMI4", 12}, {"HDMI5", 7}, {"AVS", 7}};
    for (const auto& [source, code] : sources) {
        EXPECT_EQ(BizSetSource(source), 0);
        EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{kNotify, 0}, IntWrite{kNotify, code}))
            << source;
    }
    console.take();
    tv().setWriteStatus(kNotify, 3);
    EXPECT_EQ(BizPictureInspectionNotify(), 0);
    EXPECT_EQ(BizPictureInspectionNotifyAlt(), 0);
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{kNotify, 0}, IntWrite{kNotify, 3},
                                             IntWrite{kNotify, 0}, IntWrite{kNotify, 4}));
    const auto lines = consoleLines();
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[0], "\t<-- Do picture inspection.\n -->\n") << "logged before its writes";
    EXPECT_EQ(lines[5], "\t<-- Do picture inspection.\n -->\n") << "logged after its writes";
}

TEST_F(BizPicture, ModeListDependsOnFlagSourceAndAcrState) {
    struct Case {
        int32_t flag;
        const char* source;
        int32_t acr;
        const char* expected;
    };
    const std::vector<Case> cases = {
        {0, "TV", 0, "Vivid, Standard, Energy Saving, Theater, Sports, CALIBRTED"},
        {0, "HDMI1", 0, "Vivid, Standard, Energy Saving, Theater, Game, Sports, CALIBRTED"},
        {1, "AVS", 2,
         "HDR Vivid, HDR Standard, HDR Energy Saving, HDR Theater, HDR Game, HDR Sports, "
         "HDR CALIBRTED, Enhanced(ACR)"},
        {1, "TV", 0,
         "HDR Vivid, HDR Standard, HDR Energy Saving, HDR Theater, HDR Sports, HDR CALIBRTED"},
        {2, "TV", 1, "Dolby Vision Bright, Dolby Vision Dark, Dolby Vision Custom, Enhanced(ACR)"},
        {9, "HDMI2", 3, "HDR Vivid, HDR Theater, HDR Standard"},
    };
    for (const Case& test : cases) {
        tv().set(kHdrFlag, test.flag);
        tv().set("marlo.sl2.str.source.input.current", std::string(test.source));
        tv().set(kAcr, test.acr);
        std::vector<std::string> list{"kept"};
        EXPECT_EQ(BizGetVStrPictureModeList(list), 0);
        EXPECT_EQ(joined(list), std::string("kept, ") + test.expected);
    }
    std::vector<std::string> temperatures, contrasts, motions, reductions;
    BizGetVStrColourTemperatureModeList(temperatures);
    BizGetVStrAdaptiveContrastList(contrasts);
    BizGetVStrUltraSmoothMotionList(motions);
    BizGetVStrNoiseReductionList(reductions);
    EXPECT_EQ(joined(temperatures), "Medium, Low, Mid-Low, High");
    EXPECT_EQ(joined(contrasts), "Off, Low, Medium, High");
    EXPECT_EQ(joined(motions), "Off, Custom, Clear, Standard, Smooth");
    EXPECT_EQ(joined(reductions), "Off, Low, Medium, High");
}

}  // namespace
}  // namespace norvane
