// Profiles: checked thoroughly, with one-line errors; files installed below the root.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "TvTestSupport.h"
#include "support/SimulatedPlatform.h"

namespace {

using testing_support::readTvFile;
using StringList = std::vector<std::string>;

using TvProfile = tvtest::TvTest;

// The message of the ProfileError that loading `text` as "tv.json" throws.
std::string loadError(const std::string& text) {
    try {
        tvsim::Tv::instance().loadProfileText(text, "tv.json");
    } catch (const tvsim::ProfileError& error) {
        return error.what();
    }
    return "(loaded)";
}

std::string settingError(const std::string& key, const std::string& value) {
    return loadError("{\"settings\": {\"" + key + "\": " + value + "}}");
}

TEST_F(TvProfile, BadJsonNamesLineAndColumn) {
    EXPECT_EQ(
        loadError("{\n  \"settings\": {\n    \"marlo.sl2.i32.sound.main.volume\": 25 \"x\": 1\n"
                  "  }\n}\n"),
        "tv.json:3:43: Missing ',' or '}' in object declaration");
}

TEST_F(TvProfile, ValuesMustFitTheirKeys) {
    const std::string volume = "marlo.sl2.i32.sound.main.volume";
    EXPECT_EQ(settingError(volume, "\"25\""),
              "tv.json: settings.\"" + volume + "\": expected an integer");
    EXPECT_EQ(settingError(volume, "2.5"),
              "tv.json: settings.\"" + volume + "\": expected an integer");
    EXPECT_EQ(settingError("marlo.sl2.str.basic.settings.country", "1"),
              "tv.json: settings.\"marlo.sl2.str.basic.settings.country\": expected a string or a "
              "list of strings");
    EXPECT_EQ(settingError("marlo.sl2.vstr.source.input.name", "[\"TV\", 1]"),
              "tv.json: settings.\"marlo.sl2.vstr.source.input.name\": expected a list of strings");
    EXPECT_EQ(settingError("marlo.sl2.vint32.servicemode.tunerinfo.signallevels", "[\"64\"]"),
              "tv.json: settings.\"marlo.sl2.vint32.servicemode.tunerinfo.signallevels\": "
              "expected a list of integers");
}

TEST_F(TvProfile, OnlySettingKeysCanBeSet) {
    EXPECT_EQ(settingError("foo", "1"), "tv.json: settings.\"foo\": not a setting key");
    EXPECT_NE(settingError("marlo.sl2.action.system.factory.reset", "1")
                  .find("tv.json: settings.\"marlo.sl2.action.system.factory.reset\": "),
              std::string::npos);
}

TEST_F(TvProfile, StructureProblemsAreNamed) {
    EXPECT_EQ(loadError("[]"), "tv.json: the profile: expected an object");
    EXPECT_EQ(loadError("{\"colour\": 1}"), "tv.json: colour: unknown member");
    EXPECT_EQ(loadError("{\"screen\": {\"width\": 0, \"height\": 720}}"),
              "tv.json: screen.width: expected an integer from 1 to 8192");
    EXPECT_EQ(loadError("{\"files\": {\"/a/../../etc/x\": \"\"}}"),
              "tv.json: files.\"/a/../../etc/x\": expected an absolute file path without \"..\"");
    EXPECT_EQ(loadError("{\"files\": {\"/a\": {\"base64\": \"QUJD$\"}}}"),
              "tv.json: files.\"/a\".base64: not valid base64");
}

TEST_F(TvProfile, UnreadableFileIsReported) {
    const std::string path = root() + "/missing.json";
    try {
        tv().loadProfileFile(path);
        FAIL() << "loaded a missing profile";
    } catch (const tvsim::ProfileError& error) {
        EXPECT_EQ(std::string(error.what()), path + ": cannot read the profile");
    }
}

TEST_F(TvProfile, BadProfileLeavesTheTvAsItWas) {
    tv().set("marlo.sl2.i32.sound.main.volume", 33);
    EXPECT_NE(settingError("marlo.sl2.i32.sound.main.volume", "\"x\""), "(loaded)");
    EXPECT_EQ(tv().get("marlo.sl2.i32.sound.main.volume"), tvsim::Value(33));
}

TEST_F(TvProfile, LoadingResetsThenAppliesSettingsScreenAndFiles) {
    tv().set("marlo.sl2.i32.sound.main.mute", 1);
    tv().setWriteStatus("marlo.sl2.i32.sound.main.volume", 5);
    const std::string path = root() + "/tv.json";
    std::ofstream(path) << R"({
        "description": "small test set",
        "settings": {
            "marlo.sl2.i32.sound.main.volume": 12,
            "marlo.sl2.str.video.diagnosis.info": ["1280", "720", "p", "50"],
            "marlo.sl2.cec.input.names": ["HDMI1-Player"]
        },
        "files": {
            "/deep/new/folder/note.txt": "hello\n",
            "/bin/blob": {"base64": "AAEC/w=="}
        },
        "screen": {"width": 1280, "height": 720}
    })";
    tv().loadProfileFile(path);

    EXPECT_EQ(tv().get("marlo.sl2.i32.sound.main.mute"), tvsim::Value(0));
    EXPECT_EQ(tvtest::connect("marlo.sl2.i32.sound.main.volume")->setInt32(13), 0);
    EXPECT_EQ(tv().get("marlo.sl2.cec.input.names"), tvsim::Value(StringList{"HDMI1-Player"}));
    EXPECT_EQ(tv().screenWidth(), 1280);
    EXPECT_EQ(tv().screenHeight(), 720);
    EXPECT_EQ(readTvFile("/deep/new/folder/note.txt"), "hello\n");
    EXPECT_EQ(readTvFile("/bin/blob"), std::string("\x00\x01\x02\xff", 4));
}

TEST_F(TvProfile, ChannelsAndTextsAreChecked) {
    EXPECT_EQ(loadError(R"({"channels": {}})"), "tv.json: channels: expected a list of channels");
    EXPECT_EQ(loadError(R"({"channels": [{"number": 0, "name": "A"}]})"),
              "tv.json: channels[0].number: expected an integer from 1 to 9999");
    EXPECT_EQ(
        loadError(R"({"channels": [{"number": 1, "name": "A"}, {"number": 1, "name": "B"}]})"),
        "tv.json: channels[1].number: a second channel with this number");
    EXPECT_EQ(loadError(R"({"channels": [{"number": 1}]})"),
              "tv.json: channels[0].name: expected a text of at most 40 bytes");
    EXPECT_EQ(loadError(R"({"channels": [{"number": 1, "name": "A", "picture": "news"}]})"),
              "tv.json: channels[0].picture: expected \"studio\", \"landscape\", \"pitch\", "
              "\"city\" or \"bars\"");
    EXPECT_EQ(loadError(R"({"channels": [{"number": 1, "name": "A", "logo": "x"}]})"),
              "tv.json: channels[0].logo: unknown member");
    EXPECT_EQ(loadError(R"({"texts": {"noSignal": 5}})"),
              "tv.json: texts.\"noSignal\": expected a text of at most 200 bytes");
    EXPECT_EQ(loadError(R"({"texts": {"nosignal": "Kein Signal"}})"),
              "tv.json: texts.\"nosignal\": not an on-screen text");
    EXPECT_EQ(loadError(R"({"texts": {"noSignal": "Kein Signal"},
                            "channels": [{"number": 9999, "name": "A", "programme": "P"}]})"),
              "(loaded)");
}

TEST_F(TvProfile, DefaultProfileDescribesAPlausibleTv) {
    tv().loadDefaultProfile();
    EXPECT_EQ(tv().get("marlo.sl2.str.basic.settings.country"), tvsim::Value(std::string("Usa")));
    EXPECT_EQ(tv().get("marlo.sl2.str.nvfactory.fullbrand"), tvsim::Value(std::string("Norvane")));
    EXPECT_EQ(tv().get("marlo.sl2.i32.sound.main.volume"), tvsim::Value(25));
    EXPECT_EQ(
        tv().get("marlo.sl2.vstr.source.input.name"),
        tvsim::Value(StringList{"TV", "Live TV", "AVS", "Composite", "HDMI1", "Blu-ray", "HDMI2",
                                "Sound Bar", "HDMI3", "Game Console", "HDMI4", "PC"}));
    StringList format;
    tvtest::connect("marlo.sl2.str.video.diagnosis.info")->getStringVector(format);
    EXPECT_EQ(format.size(), 6u);
    EXPECT_EQ(
        readTvFile("/nvdata/model/config/config.ini").rfind("[System]\nBluetoothSupport=1\n", 0),
        0u);
    EXPECT_FALSE(readTvFile("/certificate/keyname/hdcp2.name").empty());
    EXPECT_EQ(readTvFile("/var/tvservice/servicelist.db").rfind("SQLite format 3", 0), 0u);
    EXPECT_EQ(tv().screenWidth(), 1920);
    EXPECT_EQ(tv().get("marlo.sl2.str.source.input.current"), tvsim::Value(std::string("HDMI1")));
    EXPECT_EQ(tv().get("marlo.sl2.i32.tvservice.current.channel"), tvsim::Value(1));
}

}  // namespace
