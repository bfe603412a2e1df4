// The TV's own software as the viewer and the plug-in meet it: the picture of each source, the
// remote's keys, the menu, the on-screen displays and their time, the remote-support dialog.
#include <gtest/gtest.h>

#include <algorithm>

#include "DisplayTimers.h"
#include "JsonText.h"
#include "TvTestSupport.h"
#include "support/SimulatedPlatform.h"

namespace {

using tvtest::connect;
using tvtest::runAction;

constexpr char kSendKey[] = "marlo.sl2.system.action.send.key";
constexpr char kCapture[] = "marlo.sl2.action.system.capture.screen";
constexpr char kSource[] = "marlo.sl2.str.source.input.current";
constexpr char kChannel[] = "marlo.sl2.i32.tvservice.current.channel";
constexpr char kPictureMode[] = "marlo.sl2.i32.video.enum.picture.adjustment";
constexpr char kBrightness[] = "marlo.sl2.i32.video.brightness";
constexpr char kVolume[] = "marlo.sl2.i32.sound.main.volume";
constexpr char kMute[] = "marlo.sl2.i32.sound.main.mute";
constexpr char kEnable[] = "marlo.sl2.i32.app.setting.zel.enable";
constexpr char kSessionCode[] = "marlo.sl2.str.app.setting.zel.session.code";
constexpr char kNotify[] = "marlo.sl2.i32.app.setting.zel.notify";
constexpr double kDisplaySeconds =
    static_cast<double>(tvsim::DisplayTimers::kLongestTime) / tvsim::kSecond;

// The default TV, on a clock that runs at real speed while a test looks at the screen, so that
// nothing it expects to see has run out meanwhile.
class TvScreen : public tvtest::TvTest {
protected:
    void SetUp() override {
        tv().loadDefaultProfile();
        tv().setTimeScale(1);
    }
    void TearDown() override {
        tv().waitUntilDelivered();  // nothing is left to reach the recorders below
        tv().setTimeScale(1000);
    }

    // As the plug-in sends keys.
    void press(const std::vector<std::string>& keys) {
        for (const std::string& key : keys) {
            ASSERT_EQ(runAction(kSendKey, {key}), 0) << key;
        }
    }

    Json::Value screen() {
        Json::Value described;
        simjson::ParseError error;
        EXPECT_TRUE(simjson::parse(tv().describeScreen(), described, error)) << error.message;
        return described;
    }

    std::string capture() {
        EXPECT_EQ(runAction(kCapture, {"/shot/", "screen.raw"}), 0);
        return testing_support::readTvFile("/shot/screen.raw");
    }

    // Lets `seconds` of simulated time pass, 50 times faster: a real millisecond of delay in
    // getting back to real speed then costs only 50 simulated milliseconds.
    void letTimePass(double seconds) {
        tv().setTimeScale(50);
        tv().sleepFor(seconds);
        tv().setTimeScale(1);
    }

    int32_t integer(const char* key) { return std::get<int32_t>(tv().get(key)); }
    std::string text(const char* key) { return std::get<std::string>(tv().get(key)); }

    tvtest::IntRecorder numbers;
    tvtest::StringRecorder texts;
};

TEST_F(TvScreen, EachSourceShowsItsOwnPicture) {
    Json::Value shown = screen();
    EXPECT_EQ(shown["source"]["name"], "HDMI1");
    EXPECT_EQ(shown["source"]["shows"], "device");
    EXPECT_EQ(shown["source"]["device"], "Blu-ray") << "from the CEC device list";
    const std::string player = capture();
    ASSERT_EQ(player.size(), 1920u * 1080u * 4u);

    tv().set(kSource, std::string("TV"));
    letTimePass(kDisplaySeconds);
    shown = screen();
    EXPECT_EQ(shown["source"]["shows"], "channel");
    EXPECT_EQ(shown["source"]["channel"], 1);
    EXPECT_EQ(shown["source"]["channelName"], "Norvane One");
    const std::string channel = capture();
    EXPECT_NE(channel, player);

    tv().set(kSource, std::string("HDMI3"));
    letTimePass(kDisplaySeconds);
    shown = screen();
    EXPECT_EQ(shown["source"]["shows"], "no signal");
    EXPECT_EQ(shown["source"]["message"], "No Signal");
    const std::string nothing = capture();
    EXPECT_NE(nothing, channel);
    EXPECT_EQ(nothing.substr(0, 4), std::string("\0\0\0\xff", 4)) << "black around the box";
}

TEST_F(TvScreen, TheSourceFollowsThePluginsNotifyAndTheInputKey) {
    const std::string before = capture();
    connect(kNotify)->setInt32(7);  // what the source tool's "TV" becomes
    EXPECT_EQ(text(kSource), "TV");
    EXPECT_EQ(screen()["banner"]["kind"], "source");
    EXPECT_NE(capture(), before);

    press({"KEY_INPUT", "KEY_INPUT"});
    EXPECT_EQ(text(kSource), "HDMI1") << "TV, then AVS, then HDMI1";
    const Json::Value banner = screen()["banner"];
    EXPECT_EQ(banner["lines"][0], "Input Source");
    EXPECT_EQ(banner["lines"][3], "> HDMI1 Blu-ray");
}

TEST_F(TvScreen, PictureSettingsChangeThePixelsAndSoundSettingsDoNot) {
    const std::string before = capture();
    tv().set("marlo.sl2.i32.sound.enum.adjust", 3);
    tv().set("marlo.sl2.i32.sound.lipsync", 9);
    tv().set("marlo.sl2.i32.sound.headphone.mode", 1);
    EXPECT_EQ(capture(), before);
    for (const char* key :
         {kPictureMode, kBrightness, "marlo.sl2.i32.video.contrast",
          "marlo.sl2.i32.video.colour.intensity", "marlo.sl2.i32.video.enum.colour.temperature"}) {
        const int32_t was = integer(key);
        tv().set(key, was == 0 ? 3 : 0);
        EXPECT_NE(capture(), before) << key;
        tv().set(key, was);
        EXPECT_EQ(capture(), before) << key;
    }
}

TEST_F(TvScreen, MenuDownRightChangesThePictureModeThroughTheSettings) {
    connect(kPictureMode, &numbers);
    press({"KEY_MENU"});
    Json::Value menu = screen()["menu"];
    EXPECT_EQ(menu["title"], "Settings");
    EXPECT_EQ(menu["highlighted"], 0);
    EXPECT_EQ(menu["rows"][1]["label"], "Picture Mode");
    EXPECT_EQ(menu["rows"][1]["value"], "Standard");

    press({"KEY_CURSOR_DOWN", "KEY_CURSOR_RIGHT"});
    EXPECT_EQ(integer(kPictureMode), 2);
    tv().waitUntilDelivered();
    EXPECT_EQ(numbers.heard(), std::vector<int32_t>{2});
    menu = screen()["menu"];
    EXPECT_EQ(menu["highlighted"], 1);
    EXPECT_EQ(menu["rows"][1]["value"], "Energy Saving");
    EXPECT_EQ(screen()["picture"]["mode"], 2);

    press({"KEY_CURSOR_LEFT", "KEY_CURSOR_LEFT"});
    EXPECT_EQ(integer(kPictureMode), 0) << "back past Standard to Vivid";
    press({"KEY_CURSOR_LEFT"});
    EXPECT_EQ(integer(kPictureMode), 6) << "round to the end of the list";
}

TEST_F(TvScreen, MenuKeysMoveOpenCloseAndGoBackALevel) {
    press({"KEY_MENU", "KEY_CURSOR_UP"});
    EXPECT_EQ(screen()["menu"]["highlighted"], 5) << "up from the top goes round";
    press({"KEY_CURSOR_UP", "KEY_OK"});
    EXPECT_EQ(screen()["menu"]["title"], "Picture Settings");
    press({"KEY_CURSOR_RIGHT"});
    EXPECT_EQ(integer(kBrightness), 51);
    EXPECT_EQ(screen()["menu"]["rows"][0]["value"], "51");
    press({"KEY_BACK"});
    EXPECT_EQ(screen()["menu"]["title"], "Settings");
    EXPECT_EQ(screen()["menu"]["highlighted"], 4) << "where it was";
    press({"KEY_BACK"});
    EXPECT_FALSE(screen().isMember("menu"));

    press({"KEY_MENU", "KEY_CURSOR_DOWN", "KEY_MENU"});
    EXPECT_FALSE(screen().isMember("menu")) << "MENU closes it again";
    press({"KEY_MENU", "KEY_CURSOR_RIGHT", "KEY_EXIT"});
    EXPECT_FALSE(screen().isMember("menu"));
    EXPECT_EQ(text(kSource), "HDMI2") << "the input source item changed the source";
}

TEST_F(TvScreen, TheMenuSwitchesRemoteSupportAndAsksForASessionCode) {
    connect(kEnable, &numbers);
    connect(kSessionCode, &texts);
    press({"KEY_MENU", "KEY_CURSOR_UP", "KEY_OK"});
    Json::Value menu = screen()["menu"];
    EXPECT_EQ(menu["title"], "Remote Support");
    EXPECT_EQ(menu["rows"][0]["value"], "Off");
    EXPECT_EQ(menu["rows"][1]["label"], "Get Session Code");
    EXPECT_EQ(menu["rows"][1]["enabled"], false) << "nothing to ask for while support is off";
    press({"KEY_CURSOR_DOWN", "KEY_OK"});
    EXPECT_EQ(text(kSessionCode), "");

    press({"KEY_CURSOR_UP", "KEY_CURSOR_RIGHT"});
    EXPECT_EQ(integer(kEnable), 0xA5A5);
    EXPECT_EQ(screen()["menu"]["rows"][0]["value"], "On");
    press({"KEY_CURSOR_DOWN", "KEY_OK"});
    EXPECT_EQ(text(kSessionCode), "session0");
    Json::Value dialog = screen()["dialog"];
    EXPECT_EQ(dialog["title"], "Remote Support");
    EXPECT_EQ(dialog["text"][0], "Getting a session code...");

    // The plug-in answers as its observer does.
    tvtest::ValueHandle* answer = connect(kSessionCode);
    answer->setString("sessionDefault");
    EXPECT_EQ(screen()["dialog"]["text"][0], "Getting a session code...");
    answer->setString("123456");
    dialog = screen()["dialog"];
    EXPECT_EQ(dialog["code"], "123456");
    EXPECT_EQ(dialog["text"][0], "Your session code:");
    press({"KEY_OK"});
    EXPECT_FALSE(screen().isMember("dialog"));
    EXPECT_TRUE(screen().isMember("menu")) << "OK closed the dialog only";

    press({"KEY_CURSOR_UP", "KEY_CURSOR_LEFT"});
    EXPECT_EQ(integer(kEnable), 0x5A5A);
    tv().waitUntilDelivered();
    EXPECT_EQ(numbers.heard(), (std::vector<int32_t>{0xA5A5, 0x5A5A}));
    EXPECT_EQ(texts.heard(), (std::vector<std::string>{"session0", "sessionDefault", "123456"}));
}

TEST_F(TvScreen, TheDialogExplainsWhatWentWrong) {
    const std::pair<const char*, const char*> answers[] = {
        {"networkError",
         "The TV cannot reach the support service. Check the network connection and try again."},
        {"serverError",
         "The support service is not available at the moment. Please try again later."},
        {"connectedAlready", "A support engineer is already connected to this TV."}};
    for (const auto& [word, message] : answers) {
        tv().set(kSessionCode, std::string("session0"));
        tv().set(kSessionCode, std::string(word));
        const Json::Value dialog = screen()["dialog"];
        EXPECT_EQ(dialog["text"][0], message) << word;
        EXPECT_FALSE(dialog.isMember("code")) << word;
        press({"KEY_BACK"});
        EXPECT_FALSE(screen().isMember("dialog"));
    }
}

TEST_F(TvScreen, ConnectAndDisconnectAreShownAndThenGo) {
    tv().set(kEnable, 0xA5A5);
    tv().set(kSessionCode, std::string("654321"));
    EXPECT_EQ(screen()["dialog"]["code"], "654321");
    tvtest::ValueHandle* notify = connect(kNotify);
    notify->setInt32(0);
    notify->setInt32(1);
    Json::Value shown = screen();
    EXPECT_EQ(shown["notice"], "A support engineer is now connected to your TV.");
    EXPECT_EQ(shown["badge"], "Remote support");
    EXPECT_FALSE(shown.isMember("dialog")) << "the code has done its work";
    letTimePass(kDisplaySeconds);
    EXPECT_FALSE(screen().isMember("notice"));
    EXPECT_TRUE(screen().isMember("badge")) << "while the engineer is connected";

    notify->setInt32(0);
    notify->setInt32(2);
    shown = screen();
    EXPECT_EQ(shown["notice"], "The remote support session has ended.");
    EXPECT_FALSE(shown.isMember("badge"));
    letTimePass(kDisplaySeconds);
    EXPECT_FALSE(screen().isMember("notice"));
}

TEST_F(TvScreen, OnScreenDisplaysGoAfterTheirTime) {
    tv().set(kSource, std::string("TV"));
    letTimePass(kDisplaySeconds);
    const std::string plain = capture();
    const std::pair<const char*, const char*> displays[] = {{"KEY_VOLUME_UP", "volume"},
                                                            {"KEY_CHANNEL_UP", "banner"},
                                                            {"KEY_INFO", "banner"},
                                                            {"KEY_PICTURE", "banner"},
                                                            {"KEY_INPUT", "banner"}};
    for (const auto& [key, member] : displays) {
        press({key});
        EXPECT_TRUE(screen().isMember(member)) << key;
        letTimePass(kDisplaySeconds);
        EXPECT_FALSE(screen().isMember(member)) << key;
    }
    press({"KEY_VOLUME_DOWN"});
    EXPECT_EQ(screen()["volume"]["level"], 25);
    const double volumeSeconds =
        static_cast<double>(tvsim::DisplayTimers::kVolumeTime) / tvsim::kSecond;
    letTimePass(volumeSeconds / 2);
    EXPECT_TRUE(screen().isMember("volume")) << "not yet";
    letTimePass(volumeSeconds / 2);
    EXPECT_FALSE(screen().isMember("volume"));
    // The TV source has no game mode: five more steps round the six modes back to Standard.
    press({"KEY_TV", "KEY_CHANNEL_DOWN", "KEY_PICTURE", "KEY_PICTURE", "KEY_PICTURE", "KEY_PICTURE",
           "KEY_PICTURE"});
    letTimePass(kDisplaySeconds);
    EXPECT_EQ(capture(), plain) << "back on the same channel and picture mode, nothing left over";
}

TEST_F(TvScreen, VolumeKeysShowTheBarAndAVolumeWrittenAsASettingToo) {
    press({"KEY_VOLUME_UP", "KEY_VOLUME_UP", "KEY_MUTE"});
    Json::Value volume = screen()["volume"];
    EXPECT_EQ(volume["level"], 27);
    EXPECT_EQ(volume["muted"], true);
    press({"KEY_VOLUME_DOWN"});
    EXPECT_EQ(integer(kMute), 0) << "a volume key ends muting";
    letTimePass(kDisplaySeconds);
    connect(kVolume)->setInt32(40);  // the sound tool's write
    EXPECT_EQ(screen()["volume"]["level"], 40);
}

TEST_F(TvScreen, ChannelKeysStepThroughTheListOnlyOnTheTvSource) {
    press({"KEY_CHANNEL_UP"});
    EXPECT_EQ(integer(kChannel), 1) << "HDMI1 has no channels";
    press({"KEY_TV", "KEY_CHANNEL_UP", "KEY_CHANNEL_UP"});
    EXPECT_EQ(integer(kChannel), 3);
    Json::Value banner = screen()["banner"];
    EXPECT_EQ(banner["kind"], "channel");
    EXPECT_EQ(banner["lines"][1], "Sport 24");
    press({"KEY_CHANNEL_DOWN", "KEY_CHANNEL_DOWN", "KEY_CHANNEL_DOWN"});
    EXPECT_EQ(integer(kChannel), 5) << "round to the last";
    press({"KEY_2"});
    EXPECT_EQ(integer(kChannel), 2);
    press({"KEY_9", "KEY_CHANNEL_RETURN"});
    EXPECT_EQ(integer(kChannel), 5) << "no channel 9; back to the one before";
    press({"KEY_CURSOR_UP"});
    EXPECT_EQ(integer(kChannel), 1) << "up steps channels while no menu is open";
}

TEST_F(TvScreen, KeysTheTvDoesNotKnowChangeNothing) {
    tv().set(kSource, std::string("TV"));
    letTimePass(kDisplaySeconds);
    tv().takeJournal();
    const std::string described = tv().describeScreen();
    const std::string picture = capture();
    tv().takeJournal();
    const std::vector<std::string> unknown = {"KEY_NETFLIX", "KEY_FOO", "",    "key_menu",
                                              "KEY_MENU ",   "KEY_10",  "MENU"};
    press(unknown);
    EXPECT_EQ(tv().describeScreen(), described);
    EXPECT_EQ(capture(), picture);
    const auto journal = tv().takeJournal();
    ASSERT_EQ(journal.size(), unknown.size() + 1) << "each key journaled, then the capture";
    EXPECT_EQ(journal[1].arguments.at(0).value, "KEY_FOO");
}

TEST_F(TvScreen, PowerPutsTheScreenToSleepUntilPressedAgain) {
    press({"KEY_MENU", "KEY_POWER"});
    EXPECT_EQ(screen()["standby"], true);
    const std::string black = capture();
    EXPECT_EQ(std::count(black.begin(), black.end(), '\0'), 1920 * 1080 * 3);
    press({"KEY_MENU", "KEY_VOLUME_UP"});
    EXPECT_EQ(integer(kVolume), 25) << "asleep";
    press({"KEY_POWER"});
    EXPECT_EQ(screen()["standby"], false);
    EXPECT_FALSE(screen().isMember("menu"));
}

// Many presses of every key of the plug-in's button map, in a fixed pseudo-random order, leave
// every setting in its range and the screen drawable.
TEST_F(TvScreen, AKeyStormKeepsTheTvConsistent) {
    const std::vector<std::string> keys = {"KEY_HOME",        "KEY_MENU",
                                           "KEY_CHANNEL_UP",  "KEY_CHANNEL_DOWN",
                                           "KEY_VOLUME_UP",   "KEY_VOLUME_DOWN",
                                           "KEY_BACK",        "KEY_CURSOR_DOWN",
                                           "KEY_CURSOR_LEFT", "KEY_CURSOR_RIGHT",
                                           "KEY_CURSOR_UP",   "KEY_OK",
                                           "KEY_0",           "KEY_3",
                                           "KEY_7",           "KEY_MUTE",
                                           "KEY_RED",         "KEY_EXIT",
                                           "KEY_POWER",       "KEY_APP",
                                           "KEY_EPG",         "KEY_INPUT",
                                           "KEY_INFO",        "KEY_PICTURE",
                                           "KEY_S_MODE",      "KEY_TV",
                                           "KEY_SETTINGS",    "KEY_CHANNEL_RETURN",
                                           "KEY_NETFLIX",     "KEY_MIDEA",
                                           "KEY_FVP",         "KEY_DOT"};
    tvtest::ValueHandle* sender = connect(kSendKey);
    uint32_t state = 2024;
    for (int press = 0; press < 10000; ++press) {
        state = state * 1664525u + 1013904223u;
        tvtest::ParameterList reply;
        ASSERT_EQ(sender->onAction(reply, tvtest::arguments({keys[(state >> 8) % keys.size()]})),
                  0);
    }
    const auto inRange = [this](const char* key, int32_t low, int32_t high) {
        const int32_t value = integer(key);
        EXPECT_TRUE(value >= low && value <= high) << key << " = " << value;
    };
    inRange(kVolume, 0, 100);
    inRange(kMute, 0, 1);
    inRange(kPictureMode, 0, 6);
    inRange("marlo.sl2.i32.sound.enum.adjust", 0, 5);
    inRange(kChannel, 1, 5);
    for (const char* level :
         {kBrightness, "marlo.sl2.i32.video.contrast", "marlo.sl2.i32.video.colour.intensity"}) {
        inRange(level, 0, 100);
    }
    const std::vector<std::string> sources = {"TV", "AVS", "HDMI1", "HDMI2", "HDMI3", "HDMI4"};
    EXPECT_NE(std::find(sources.begin(), sources.end(), text(kSource)), sources.end());
    EXPECT_TRUE(integer(kEnable) == 0 || integer(kEnable) == 0xA5A5 || integer(kEnable) == 0x5A5A);
    EXPECT_EQ(tv().takeJournal().size(), 10000u);

    EXPECT_EQ(capture().size(), 1920u * 1080u * 4u);
    if (screen()["standby"].asBool()) {
        press({"KEY_POWER"});
    }
    press({"KEY_EXIT"});
    letTimePass(kDisplaySeconds);
    const Json::Value shown = screen();
    for (const char* display : {"menu", "dialog", "banner", "volume", "notice"}) {
        EXPECT_FALSE(shown.isMember(display)) << display;
    }
}

TEST_F(TvScreen, TheProfileGivesChannelsAndOnScreenWording) {
    tv().loadProfileText(R"({
        "settings": {"marlo.sl2.str.source.input.current": "TV",
                     "marlo.sl2.i32.tvservice.current.channel": 12},
        "channels": [{"number": 7, "name": "Sieben"}, {"number": 12, "name": "Zwoelf",
                      "programme": "Nachrichten", "picture": "city"}],
        "texts": {"noSignal": "Kein Signal", "settings": "Einstellungen"}})",
                         "german.json");
    Json::Value shown = screen();
    EXPECT_EQ(shown["source"]["channelName"], "Zwoelf");
    EXPECT_EQ(shown["source"]["programme"], "Nachrichten");
    press({"KEY_MENU"});
    EXPECT_EQ(screen()["menu"]["title"], "Einstellungen");
    EXPECT_EQ(screen()["menu"]["rows"][1]["label"], "Picture Mode") << "English where not given";
    press({"KEY_EXIT", "KEY_CHANNEL_UP"});
    EXPECT_EQ(screen()["source"]["channelName"], "Sieben");
    tv().set(kSource, std::string("HDMI2"));
    EXPECT_EQ(screen()["source"]["message"], "Kein Signal");
}

}  // namespace
