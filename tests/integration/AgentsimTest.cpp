// agentsim driven as its users drive it: the built binary, its command line and its scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <json/value.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "support/JsonLines.h"
#include "support/ProcessRun.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing_support::jsonLines;
using testing_support::ProcessResult;
using testing_support::runProcess;

std::string dataFile(const std::string& name) {
    std::ifstream file(std::string(NORVANE_TEST_DATA_DIR) + "/agentsim/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

ProcessResult agentsim(const std::vector<std::string>& arguments, const std::string& input = "") {
    return runProcess(NORVANE_AGENTSIM_PATH, arguments, input);
}

TEST(AgentsimRunner, AnswersEveryRequestAsTheContractSays) {
    const ProcessResult result = agentsim({"--tv", "empty", "--time-scale", "100", "run", "-"},
                                          dataFile("runner_contract.jsonl"));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, dataFile("runner_contract.expected.jsonl"));
}

TEST(AgentsimRunner, DrivesAStartedPlugInAndReportsItsJournal) {
    const std::string script =
        "{\"op\":\"init\"}\n"
        "{\"op\":\"journal\"}\n"
        "{\"op\":\"tv.fault\",\"key\":\"marlo.sl2.str.app.setting.zel.session.code\","
        "\"write\":5}\n"
        "{\"op\":\"list\"}\n"
        "{\"op\":\"deviceValues\"}\n"
        "{\"op\":\"frame\",\"size\":16}\n"
        "{\"op\":\"tv.screen\",\"width\":0,\"height\":5}\n";
    const ProcessResult result = agentsim({"--time-scale", "100", "run", "-"}, script);
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<Json::Value> replies = jsonLines(result.out);
    ASSERT_EQ(replies.size(), 7u);
    for (size_t i = 0; i < replies.size(); ++i) {
        EXPECT_EQ(replies[i]["step"].asInt(), static_cast<int>(i + 1));
    }
    const Json::Value& entries = replies[1]["entries"];
    ASSERT_GE(entries.size(), 1u);
    EXPECT_EQ(entries[entries.size() - 1]["key"], "marlo.sl2.str.app.setting.zel.session.code");
    EXPECT_EQ(entries[entries.size() - 1]["set"], "sessionDefault");
    EXPECT_FALSE(replies[2].isMember("error"));
    EXPECT_TRUE(replies[3]["commands"].isArray());
    EXPECT_TRUE(replies[4]["model"].isString());
    EXPECT_EQ(replies[5]["result"], -1) << "a 16-byte buffer is too small for a frame";
    EXPECT_TRUE(replies[6].isMember("error"));
}

TEST(AgentsimCommandLine, RefusesBadInputWithOneLineAndAFailure) {
    const ProcessResult missing = agentsim({"--plugin", "/no/such/plugin.so", "list"});
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_EQ(missing.err, "agentsim: no plug-in at /no/such/plugin.so\n");

    const ProcessResult notPlugin = agentsim({"--plugin", NORVANE_AGENTSIM_PATH, "list"});
    EXPECT_NE(notPlugin.exitCode, 0);
    EXPECT_THAT(notPlugin.err, StartsWith("agentsim: cannot load"));

    const std::string profile = testing::TempDir() + "broken-profile.json";
    std::ofstream(profile) << "{\n  \"settings\": {\n    \"marlo.sl2.i32.sound.main.volume\": 3\n"
                              "    \"marlo.sl2.i32.sound.main.mute\": 1\n  }\n}\n";
    const ProcessResult broken = agentsim({"--tv", profile, "list"});
    EXPECT_NE(broken.exitCode, 0);
    EXPECT_EQ(broken.err,
              "agentsim: " + profile + ":4:5: Missing ',' or '}' in object declaration\n");
    EXPECT_EQ(broken.out, "") << "nothing starts";
    std::remove(profile.c_str());

    const ProcessResult unknown = agentsim({"frobnicate"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err, HasSubstr("unknown command 'frobnicate'"));

    const ProcessResult badJson = agentsim({"--tv", "empty", "exec", "1", "{\"a\":"});
    EXPECT_NE(badJson.exitCode, 0);
    const ProcessResult badScale = agentsim({"--time-scale", "fast", "list"});
    EXPECT_EQ(badScale.exitCode, 2);
    EXPECT_THAT(badScale.err, HasSubstr("--time-scale"));
}

TEST(AgentsimCommandLine, EveryCommandExplainsItself) {
    for (const char* command : {"demo", "list", "describe", "get", "exec", "password",
                                "device-values", "screen", "run"}) {
        const ProcessResult help = agentsim({command, "--help"});
        EXPECT_EQ(help.exitCode, 0) << command;
        EXPECT_THAT(help.out, StartsWith(std::string("usage: agentsim [options] ") + command));
    }
}

TEST(AgentsimDemo, ToursEverythingAndSavesTheScreen) {
    const std::string snapshot = testing::TempDir() + "demo-screen.png";
    const ProcessResult demo = agentsim({"--time-scale", "200", "demo", snapshot});
    EXPECT_EQ(demo.exitCode, 0) << demo.err;
    for (const char* expected :
         {"== Start-up: initialize() ==", "Start biz proxy successfully",
          "18  FFFFFF_LIVE_SUPPORT_RESET_FACTORY_DEFAULTS", "HDMI1 device 1",
          "TV <- {\"key\":\"marlo.sl2.i32.video.colour.intensity\",\"set\":65}", "[0,\"KEY_MENU\"]",
          "[0,\"KEY_CURSOR_RIGHT\"]", "the TV shows HDMI1: Blu-ray",
          "on screen: the menu \"Settings\" at \"Picture Mode\" (Energy Saving)",
          "the picture tool reads the picture mode back: Energy Saving",
          "the TV menu shows the code: 123456", "on screen: the \"Remote Support\" box", "[123456]",
          "on screen: \"A support engineer is now connected to your TV.\"",
          "TV <- notify 0, then 2", "saved a 1920 x 1080 frame", "bytes of log", "\nDone.\n"}) {
        EXPECT_THAT(demo.out, HasSubstr(expected));
    }
    for (const std::string& path : {snapshot, testing::TempDir() + "demo-screen-before-keys.png",
                                    testing::TempDir() + "demo-screen-after-keys.png"}) {
        std::ifstream png(path, std::ios::binary);
        std::string signature(8, '\0');
        png.read(signature.data(), 8);
        EXPECT_EQ(signature, "\x89PNG\r\n\x1a\n") << path;
        std::remove(path.c_str());
    }
}

}  // namespace
