// The TV's own reactions to the plug-in's actions and writes.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "TvTestSupport.h"
#include "support/SimulatedPlatform.h"

namespace {

using testing_support::readTvFile;
using tvtest::connect;
using tvtest::runAction;

constexpr char kCapture[] = "marlo.sl2.action.system.capture.screen";
constexpr char kVolume[] = "marlo.sl2.i32.sound.main.volume";
constexpr char kMute[] = "marlo.sl2.i32.sound.main.mute";
constexpr char kPictureMode[] = "marlo.sl2.i32.video.enum.picture.adjustment";
constexpr char kContrast[] = "marlo.sl2.i32.video.dynamic.contrast";
constexpr char kOverscan[] = "marlo.sl2.i32.video.overscan";
constexpr char kLipsync[] = "marlo.sl2.i32.sound.lipsync";
constexpr char kSource[] = "marlo.sl2.str.source.input.current";

using Bgra = std::array<uint8_t, 4>;

Bgra pixelAt(const std::string& picture, int32_t width, int32_t x, int32_t y) {
    const size_t offset = (static_cast<size_t>(y) * width + x) * 4;
    Bgra pixel{};
    for (size_t i = 0; i < 4; ++i) {
        pixel[i] = static_cast<uint8_t>(picture.at(offset + i));
    }
    return pixel;
}

// A TV tuned to a test card channel, whose bars are easy to find in a capture.
class TvCapture : public tvtest::TvTest {
protected:
    void SetUp() override {
        tv().loadProfileText(R"({"settings": {"marlo.sl2.str.source.input.current": "TV"},
                                 "channels": [{"number": 5, "name": "Test", "picture": "bars"}]})",
                             "test-card.json");
    }
};

TEST_F(TvCapture, WritesWhatTheScreenShowsAtTheScreenSize) {
    EXPECT_EQ(runAction(kCapture, {"/tmp/screenshot/", "test0.raw"}), 0);
    const std::string picture = readTvFile("/tmp/screenshot/test0.raw");
    ASSERT_EQ(picture.size(), 1920u * 1080u * 4u);
    // Bars are 240 pixels wide; the ramp starts at row 720.
    EXPECT_EQ(pixelAt(picture, 1920, 0, 400), (Bgra{255, 255, 255, 255}));      // white
    EXPECT_EQ(pixelAt(picture, 1920, 300, 400), (Bgra{0, 255, 255, 255}));      // yellow
    EXPECT_EQ(pixelAt(picture, 1920, 1300, 400), (Bgra{0, 0, 255, 255}));       // red
    EXPECT_EQ(pixelAt(picture, 1920, 1500, 700), (Bgra{255, 0, 0, 255}));       // blue
    EXPECT_EQ(pixelAt(picture, 1920, 0, 1079), (Bgra{0, 0, 0, 255}));           // ramp start
    EXPECT_EQ(pixelAt(picture, 1920, 1919, 1079), (Bgra{255, 255, 255, 255}));  // ramp end
}

TEST_F(TvCapture, FollowsTheConfiguredSizeAndCreatesTheFolder) {
    tv().setScreenSize(64, 48);
    EXPECT_EQ(runAction(kCapture, {"/new/folder/", "small.raw"}), 0);
    const std::string picture = readTvFile("/new/folder/small.raw");
    ASSERT_EQ(picture.size(), 64u * 48u * 4u);
    EXPECT_EQ(pixelAt(picture, 64, 5 * 8, 30),
              (Bgra{0, 0, 255, 255}));  // red bar, below the caption
}

TEST_F(TvCapture, WritesNothingWhileCaptureIsOff) {
    tv().setCaptureEnabled(false);
    EXPECT_EQ(runAction(kCapture, {"/tmp/screenshot/", "test1.raw"}), 0);
    EXPECT_FALSE(std::filesystem::exists(tv().resolvePath("/tmp/screenshot/test1.raw")));
}

TEST_F(TvCapture, IncompleteArgumentsAreRefused) {
    EXPECT_NE(runAction(kCapture, {"/tmp/screenshot/"}), 0);
}

TEST_F(TvCapture, ActionHandlerReplacesTheBuiltInReaction) {
    tvsim::ParameterList seen;
    tv().setActionHandler(kCapture,
                          [&](const tvsim::ParameterList& arguments, tvsim::ParameterList& reply) {
                              seen = arguments;
                              reply.push_back({0, "busy"});
                              return 8;
                          });
    tvsim::ParameterList reply;
    EXPECT_EQ(connect(kCapture)->onAction(reply, tvtest::arguments({"/s/", "x.raw"})), 8);
    ASSERT_EQ(reply.size(), 1u);
    EXPECT_EQ(reply[0].value, "busy");
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1].tag, 0x10000);
    EXPECT_FALSE(std::filesystem::exists(tv().resolvePath("/s/x.raw")));
    EXPECT_EQ(tv().takeJournal().at(0).status, 8);
}

// A TV whose profile sets some picture and sound settings.
class TvResets : public tvtest::TvTest {
protected:
    void SetUp() override {
        tv().loadProfileText(R"({"settings": {
            "marlo.sl2.i32.video.enum.picture.adjustment": 1,
            "marlo.sl2.i32.video.dynamic.contrast": 2,
            "marlo.sl2.i32.sound.main.volume": 25,
            "marlo.sl2.i32.sound.lipsync": 3,
            "marlo.sl2.str.source.input.current": "HDMI1"}})",
                             "resets.json");
    }

    void changeEverything() {
        for (const char* key : {kPictureMode, kContrast, kOverscan, kVolume, kLipsync}) {
            tv().set(key, 9);
        }
        tv().set(kSource, std::string("TV"));
    }

    int32_t integer(const char* key) { return std::get<int32_t>(tv().get(key)); }
};

TEST_F(TvResets, PictureResetRestoresOnlyPictureSettingsAndNotifies) {
    changeEverything();
    tvtest::IntRecorder observer;
    connect(kContrast, &observer);
    EXPECT_EQ(runAction("marlo.sl2.action.video.reset.picture.settings"), 0);
    EXPECT_EQ(integer(kPictureMode), 1);
    EXPECT_EQ(integer(kContrast), 2);
    EXPECT_EQ(integer(kOverscan), 0);  // not in the profile: back to its default
    EXPECT_EQ(integer(kVolume), 9);
    tv().waitUntilDelivered();
    EXPECT_EQ(observer.heard(), std::vector<int32_t>{2});
}

TEST_F(TvResets, SoundResetRestoresOnlySoundSettings) {
    changeEverything();
    EXPECT_EQ(runAction("marlo.sl2.action.sound.setting.reset"), 0);
    EXPECT_EQ(integer(kVolume), 25);
    EXPECT_EQ(integer(kLipsync), 3);
    EXPECT_EQ(integer(kContrast), 9);
}

TEST_F(TvResets, FactoryResetRestoresEverySetting) {
    changeEverything();
    tv().set("marlo.sl2.str.app.setting.esn", std::string("X"));
    EXPECT_EQ(runAction("marlo.sl2.action.system.factory.reset"), 0);
    EXPECT_EQ(integer(kContrast), 2);
    EXPECT_EQ(integer(kVolume), 25);
    EXPECT_EQ(tv().get(kSource), tvsim::Value(std::string("HDMI1")));
    EXPECT_EQ(tv().get("marlo.sl2.str.app.setting.esn"), tvsim::Value(std::string()));
}

TEST_F(TvResets, DataModuleBacksUpAndRestoresEachGroup) {
    const char* dataModule = "marlo.sl2.action.system.operate.dataModule";
    EXPECT_NE(runAction(dataModule, {"2", "1"}), 0);  // nothing backed up yet
    EXPECT_EQ(runAction(dataModule, {"1"}), 0);
    changeEverything();

    EXPECT_EQ(runAction(dataModule, {"2", "1"}), 0);
    EXPECT_EQ(integer(kVolume), 25);
    EXPECT_EQ(integer(kContrast), 9);
    EXPECT_EQ(runAction(dataModule, {"2", "2"}), 0);
    EXPECT_EQ(integer(kContrast), 2);
    EXPECT_EQ(integer(kOverscan), 0);
    EXPECT_NE(runAction(dataModule, {"2", "3"}), 0);
}

using TvRemoteKeys = tvtest::TvTest;

TEST_F(TvRemoteKeys, VolumeKeysStepWithinRangeAndMuteToggles) {
    const char* sendKey = "marlo.sl2.system.action.send.key";
    tv().set(kVolume, 99);
    runAction(sendKey, {"KEY_VOLUME_UP"});
    runAction(sendKey, {"KEY_VOLUME_UP"});
    EXPECT_EQ(tv().get(kVolume), tvsim::Value(100));
    tv().set(kVolume, 0);
    runAction(sendKey, {"KEY_VOLUME_DOWN"});
    EXPECT_EQ(tv().get(kVolume), tvsim::Value(0));
    runAction(sendKey, {"KEY_MUTE"});
    EXPECT_EQ(tv().get(kMute), tvsim::Value(1));
    runAction(sendKey, {"KEY_MUTE"});
    EXPECT_EQ(tv().get(kMute), tvsim::Value(0));
    EXPECT_EQ(runAction(sendKey, {"KEY_MENU"}), 0);
    EXPECT_EQ(tv().takeJournal().size(), 6u);
}

TEST_F(TvRemoteKeys, PictureAdjustmentTakesANumericMode) {
    const char* adjust = "marlo.sl2.action.video.set.picture.adjustment";
    EXPECT_EQ(runAction(adjust, {"3", "1", "1"}), 0);
    EXPECT_EQ(tv().get(kPictureMode), tvsim::Value(3));
    EXPECT_NE(runAction(adjust, {"vivid"}), 0);
    EXPECT_EQ(tv().get(kPictureMode), tvsim::Value(3));
}

TEST_F(TvRemoteKeys, NotifyWritesSwitchTheSource) {
    tvtest::ValueHandle* notify = connect("marlo.sl2.i32.app.setting.zel.notify");
    const std::pair<int32_t, const char*> switches[] = {
        {7, "TV"}, {8, "AVS"}, {9, "HDMI1"}, {12, "HDMI4"}};
    for (const auto& [notification, source] : switches) {
        notify->setInt32(notification);
        EXPECT_EQ(tv().get(kSource), tvsim::Value(std::string(source))) << notification;
    }
    notify->setInt32(5);
    EXPECT_EQ(tv().get(kSource), tvsim::Value(std::string("HDMI4")));
    tv().set("marlo.sl2.i32.app.setting.zel.notify", 7);  // the TV's own write: no reaction
    EXPECT_EQ(tv().get(kSource), tvsim::Value(std::string("HDMI4")));
}

}  // namespace
