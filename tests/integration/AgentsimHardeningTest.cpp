// agentsim under careless and hostile use: it cleans up after itself on every way out, stays
// inside the TV's filesystem, refuses extreme values and malformed documents, keeps its records
// bounded and says with its exit status whether the job worked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <json/value.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <thread>

#include "support/Eventually.h"
#include "support/JsonLines.h"
#include "support/ProcessRun.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing_support::jsonLines;
using testing_support::ProcessResult;
using testing_support::ProcessSetup;
using testing_support::RunningProcess;

constexpr int kUsageStatus = 2;
constexpr int kFailureStatus = 3;

std::string dataFile(const std::string& name) {
    std::ifstream file(std::string(NORVANE_TEST_DATA_DIR) + "/agentsim/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::string> entriesOf(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A program started under emulation on a loaded machine may need about a minute.
bool eventually(const std::function<bool()>& condition) {
    return testing_support::eventually(condition, std::chrono::minutes(1));
}

// Each test has a folder of its own: agentsim takes it as its temporary folder (TMPDIR), so that
// whatever a run leaves behind is seen there, apart from what other programs put into /tmp
// meanwhile. After every run the folder holds what it held before.
class Agentsim : public testing::Test {
protected:
    Agentsim() {
        char pattern[] = "/tmp/agentsim-test-XXXXXX";
        if (mkdtemp(pattern) != nullptr) {
            folder_ = pattern;
            fs::create_directory(temporaries());
        }
    }
    ~Agentsim() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    // A folder for the test's own files, beside the temporary folder.
    fs::path folder() const { return folder_; }
    fs::path temporaries() const { return folder_ / "tmp"; }

    ProcessSetup setup(const std::string& input = "") const {
        ProcessSetup made;
        made.input = input;
        made.environment = {"TMPDIR=" + temporaries().string()};
        return made;
    }

    ProcessResult run(const std::vector<std::string>& arguments, const ProcessSetup& made) {
        const std::vector<std::string> before = entriesOf(temporaries());
        ProcessResult result = RunningProcess(NORVANE_AGENTSIM_PATH, arguments, made).wait();
        EXPECT_EQ(entriesOf(temporaries()), before)
            << "left behind by agentsim " << testing::PrintToString(arguments);
        EXPECT_THAT(result.err, Not(HasSubstr("runtime error"))) << "undefined behaviour";
        return result;
    }

    ProcessResult run(const std::vector<std::string>& arguments, const std::string& input = "") {
        return run(arguments, setup(input));
    }

    // A TV root holding the link "out" to a folder outside it (with a file "secret") and the
    // link "in" to its own folder "data".
    fs::path rootWithLinks() const {
        const fs::path root = folder() / "tv";
        fs::create_directories(root / "data");
        fs::create_directories(folder() / "outside");
        std::ofstream(folder() / "outside" / "secret") << "secret\n";
        fs::create_directory_symlink(folder() / "outside", root / "out");
        fs::create_directory_symlink("data", root / "in");
        return root;
    }

    fs::path writeFile(const std::string& name, const std::string& text) const {
        const fs::path path = folder() / name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

private:
    fs::path folder_;
};

using AgentsimCleanUp = Agentsim;

TEST_F(AgentsimCleanUp, SignalsRemoveTheTvAndEndWith128PlusTheSignal) {
    const std::string script = "{\"op\":\"init\"}\n{\"op\":\"wait\",\"seconds\":86400}\n";
    for (int number : {SIGHUP, SIGINT, SIGTERM}) {
        RunningProcess agentsim(NORVANE_AGENTSIM_PATH, {"run", "-"}, setup(script));
        ASSERT_TRUE(eventually([&] { return agentsim.outputSoFar() == "{\"step\":1}\n"; }))
            << "signal " << number;
        EXPECT_EQ(entriesOf(temporaries()).size(), 1u) << "the TV's folder";
        agentsim.signal(number);
        const ProcessResult result = agentsim.wait();
        EXPECT_EQ(result.exitCode, 128 + number) << result.err;
        EXPECT_THAT(entriesOf(temporaries()), IsEmpty()) << "signal " << number;
    }
}

TEST_F(AgentsimCleanUp, ARootTheUserGaveIsKeptThroughASignal) {
    const fs::path root = folder() / "my-tv";
    RunningProcess agentsim(NORVANE_AGENTSIM_PATH, {"--root", root.string(), "run", "-"},
                            setup("{\"op\":\"wait\",\"seconds\":86400}\n"));
    ASSERT_TRUE(eventually([&] { return fs::exists(root / "usr/local/bin/ra_getlog"); }));
    agentsim.signal(SIGTERM);
    EXPECT_EQ(agentsim.wait().exitCode, 128 + SIGTERM);
    EXPECT_TRUE(fs::exists(root / "usr/local/bin/ra_getlog"));
    EXPECT_THAT(entriesOf(temporaries()), IsEmpty());
}

TEST_F(AgentsimCleanUp, EveryFailureLeavesNothingBehind) {
    const fs::path profile = writeFile("bad-profile.json", "{\"settings\": 7}");
    const std::vector<std::pair<std::vector<std::string>, int>> failures = {
        {{"--frobnicate", "list"}, kUsageStatus},
        {{"--root", "", "list"}, kUsageStatus},
        {{"--tv", profile.string(), "list"}, kUsageStatus},
        {{"--tv", (folder() / "no-such-profile.json").string(), "list"}, kUsageStatus},
        {{"frobnicate"}, kUsageStatus},
        {{"exec", "1", "{\"a\":"}, kUsageStatus},
        {{"--plugin", (folder() / "no-such.so").string(), "list"}, kFailureStatus},
        {{"--plugin", profile.string(), "list"}, kFailureStatus},
        {{"exec", "16", "[]"}, 1},
    };
    for (const auto& [arguments, status] : failures) {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exitCode, status) << testing::PrintToString(arguments) << result.err;
    }
}

TEST_F(AgentsimCleanUp, OutputThatCannotBeWrittenIsAFailure) {
    ProcessSetup toFullDevice = setup("{\"op\":\"init\"}\n{\"op\":\"list\"}\n");
    toFullDevice.outputPath = "/dev/full";
    const ProcessResult script = run({"run", "-"}, toFullDevice);
    EXPECT_EQ(script.exitCode, kFailureStatus);
    EXPECT_EQ(script.err, "agentsim: cannot write the output: No space left on device\n");

    toFullDevice.input.clear();
    const ProcessResult list = run({"list"}, toFullDevice);
    EXPECT_EQ(list.exitCode, kFailureStatus);
    EXPECT_EQ(list.err, "agentsim: cannot write the output: No space left on device\n");
}

using AgentsimConfinement = Agentsim;

TEST_F(AgentsimConfinement, ScriptPathsStayInsideTheTv) {
    const fs::path root = rootWithLinks();
    const ProcessResult result =
        run({"--tv", "empty", "--root", root.string(), "--time-scale", "100", "run", "-"},
            dataFile("runner_confinement.jsonl"));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, dataFile("runner_confinement.expected.jsonl"));
    EXPECT_THAT(entriesOf(folder() / "outside"), ElementsAre("secret"));
    EXPECT_FALSE(fs::exists(folder() / "escaped.txt"));
    EXPECT_FALSE(fs::exists(folder() / "id.json"));
    EXPECT_TRUE(fs::exists(root / "inside.txt"));
    EXPECT_TRUE(fs::exists(root / "data/b.txt"));
}

TEST_F(AgentsimConfinement, ProfileFilesStayInsideTheTv) {
    const fs::path root = rootWithLinks();
    const fs::path throughLink =
        writeFile("link.json", "{\"files\": {\"/out/planted\": \"x\", \"/in/kept\": \"y\"}}");
    const ProcessResult linked =
        run({"--tv", throughLink.string(), "--root", root.string(), "list"});
    EXPECT_EQ(linked.exitCode, kUsageStatus);
    EXPECT_EQ(linked.err, "agentsim: " + throughLink.string() +
                              ": files.\"/out/planted\": cannot write it: \"/out/planted\" leaves "
                              "the TV's filesystem through a symbolic link\n");
    EXPECT_THAT(entriesOf(folder() / "outside"), ElementsAre("secret"));

    const fs::path climbing = writeFile("climb.json", "{\"files\": {\"/../planted\": \"x\"}}");
    const ProcessResult climbed = run({"--tv", climbing.string(), "list"});
    EXPECT_EQ(climbed.exitCode, kUsageStatus);
    EXPECT_THAT(climbed.err, HasSubstr("files.\"/../planted\": expected an absolute file path"));
}

TEST_F(AgentsimConfinement, ARootTheShellToolsCannotTakeIsRefused) {
    for (const std::string hostile : {" ", "'", "\"", ";", "$", "`", "\\", "\n", "\t", "&", "|"}) {
        const fs::path root = folder() / ("tv" + hostile + "x");
        const ProcessResult result = run({"--root", root.string(), "list"});
        EXPECT_EQ(result.exitCode, kUsageStatus) << "'" << hostile << "'";
        EXPECT_EQ(result.err, "agentsim: --root \"" + root.string() +
                                  "\" cannot hold the TV's filesystem: the TV's shell tools take "
                                  "the folder's name as it stands, so it may hold only letters, "
                                  "digits and / . _ - + , : @ % =\n");
        EXPECT_FALSE(fs::exists(root)) << "nothing is made";
    }

    const fs::path blankTemporaries = folder() / "my temp";
    fs::create_directory(blankTemporaries);
    ProcessSetup blank = setup();
    blank.environment = {"TMPDIR=" + blankTemporaries.string()};
    const ProcessResult result = run({"list"}, blank);
    EXPECT_EQ(result.exitCode, kUsageStatus);
    EXPECT_THAT(result.err, StartsWith("agentsim: the temporary folder (TMPDIR) \"" +
                                       blankTemporaries.string() + "\" cannot hold"));
    EXPECT_THAT(entriesOf(blankTemporaries), IsEmpty());
}

using AgentsimLimits = Agentsim;

TEST_F(AgentsimLimits, TimeScalesOutsideTheirRangeAreRefused) {
    for (const char* scale : {"0", "-1", "1e-300", "0.0099", "10000.5", "1e300", "inf", "nan"}) {
        const ProcessResult result = run({"--time-scale", scale, "run", "-"});
        EXPECT_EQ(result.exitCode, kUsageStatus) << scale;
        EXPECT_EQ(result.err, std::string("agentsim: --time-scale needs a number from 0.01 to "
                                          "10000, not '") +
                                  scale + "'\n");
    }
    for (const char* scale : {"0.01", "10000"}) {
        const ProcessResult result =
            run({"--time-scale", scale, "run", "-"}, "{\"op\":\"wait\",\"seconds\":0}\n");
        EXPECT_EQ(result.exitCode, 0) << scale << result.err;
        EXPECT_EQ(result.out, "{\"step\":1}\n");
    }
}

// Waits, screen and frame sizes out of range, nesting at and past the limit, trailing text,
// repeated names and bytes that are no UTF-8, answered line by line.
TEST_F(AgentsimLimits, RunnerLinesBeyondTheLimitsAreAnsweredWithErrors) {
    const ProcessResult result =
        run({"--tv", "empty", "--time-scale", "100", "run", "-"}, dataFile("runner_limits.jsonl"));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, dataFile("runner_limits.expected.jsonl"));
}

TEST_F(AgentsimLimits, ALineLongerThan16MiBIsAnErrorAndTheNextIsAnswered) {
    const std::string huge = "{\"op\":\"tv.file\",\"path\":\"/x\",\"text\":\"" +
                             std::string(16 * 1024 * 1024, 'a') + "\"}\n";
    const ProcessResult result = run({"run", "-"}, huge + "{\"op\":\"tv.stat\",\"path\":\"/x\"}\n");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "{\"step\":1,\"error\":\"the line is longer than 16 MiB\"}\n"
              "{\"step\":2,\"exists\":false,\"size\":0}\n");
}

TEST_F(AgentsimLimits, DocumentsWithTrailingTextOrDeepNestingAreRefused) {
    const ProcessResult argument = run({"--tv", "empty", "exec", "14", "{\"PQ_RESET\":\"Yes\"} x"});
    EXPECT_EQ(argument.exitCode, kUsageStatus);
    EXPECT_EQ(argument.err,
              "agentsim: invalid JSON at column 20: Extra non-whitespace after JSON value.\n");

    const std::string deep = std::string(65, '[') + std::string(65, ']');
    const ProcessResult nested = run({"--tv", "empty", "exec", "14", deep});
    EXPECT_EQ(nested.exitCode, kUsageStatus);
    EXPECT_EQ(nested.err,
              "agentsim: invalid JSON at column 65: arrays and objects nested deeper than 64 "
              "levels\n");

    const fs::path profile = writeFile("trailing.json", "{\"settings\": {}}\n{}\n");
    const ProcessResult trailing = run({"--tv", profile.string(), "list"});
    EXPECT_EQ(trailing.exitCode, kUsageStatus);
    EXPECT_EQ(trailing.err,
              "agentsim: " + profile.string() + ":2:1: Extra non-whitespace after JSON value.\n");
}

// The runner keeps the newest 10000 entries of each record and counts the rest, so that a long
// script that never asks for them runs in bounded memory.
TEST_F(AgentsimLimits, RecordsKeepTheirNewestEntriesAndCountTheRest) {
    constexpr int kPresses = 12000;
    std::string script = "{\"op\":\"init\"}\n";
    for (int i = 0; i < kPresses; ++i) {
        script +=
            "{\"op\":\"exec\",\"id\":\"FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON\","
            "\"input\":{\"BUTTONS\":[\"VOL_UP\"]}}\n";
    }
    script += "{\"op\":\"journal\"}\n{\"op\":\"logs\"}\n{\"op\":\"journal\"}\n";
    const ProcessResult result = run({"--time-scale", "1000", "run", "-"}, script);
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<Json::Value> replies = jsonLines(result.out);
    ASSERT_EQ(replies.size(), kPresses + 4u);

    const Json::Value& journal = replies[kPresses + 1];
    ASSERT_EQ(journal["entries"].size(), 10000u);
    // The start-up's one write and the presses: the oldest are the ones dropped.
    EXPECT_EQ(journal["dropped"]["entries"].asUInt64(), kPresses + 1 - 10000u);
    EXPECT_EQ(journal["entries"][9999]["key"], "marlo.sl2.system.action.send.key");

    const Json::Value& logs = replies[kPresses + 2];
    EXPECT_EQ(logs["console"].size(), 10000u);
    EXPECT_EQ(logs["host"].size(), 10000u);
    EXPECT_GT(logs["dropped"]["console"].asUInt64(), 0u);
    EXPECT_GT(logs["dropped"]["host"].asUInt64(), 0u);
    EXPECT_THAT(logs["host"][9999]["text"].asString(), HasSubstr("KEY_VOLUME_UP"));

    const Json::Value& again = replies[kPresses + 3];
    EXPECT_EQ(again["entries"].size(), 0u) << "taken already";
    EXPECT_FALSE(again.isMember("dropped")) << "nothing dropped since";
}

using AgentsimExitStatus = Agentsim;

TEST_F(AgentsimExitStatus, SaysWhetherThePlugInsResultWasZero) {
    const ProcessResult failed = run({"--tv", "empty", "exec", "16", "[]"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_THAT(failed.out, HasSubstr("\nresult: 3\n")) << "printed first";

    const ProcessResult done = run({"--tv", "empty", "exec", "14", "{\"PQ_RESET\":\"Yes\"}"});
    EXPECT_EQ(done.exitCode, 0) << done.err;
    EXPECT_THAT(done.out, HasSubstr("\nresult: 0\n"));

    const ProcessResult described = run({"--tv", "empty", "describe", "14"});
    EXPECT_EQ(described.exitCode, 0) << described.err;
}

TEST_F(AgentsimExitStatus, WrongArgumentsAndScriptsAreUsageErrors) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"list", "extra"},
         "agentsim: list takes no arguments, not 1 (usage: agentsim [options] list)\n"},
        {{"password", "a", "b"},
         "agentsim: password takes no arguments, not 2 (usage: agentsim [options] password)\n"},
        {{"describe"},
         "agentsim: describe takes 1 argument, not 0 (usage: agentsim [options] describe "
         "ID|NUMBER)\n"},
        {{"exec", "1", "{}", "{}"},
         "agentsim: exec takes 1 or 2 arguments, not 3 (usage: agentsim [options] exec "
         "ID|NUMBER [JSON])\n"},
        {{"run", folder().string()},
         "agentsim: the script " + folder().string() + " is a folder\n"},
        {{"run", (folder() / "none.jsonl").string()},
         "agentsim: cannot read the script " + (folder() / "none.jsonl").string() +
             ": No such file or directory\n"},
    };
    for (const auto& [arguments, message] : cases) {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exitCode, kUsageStatus) << testing::PrintToString(arguments);
        EXPECT_EQ(result.err, message);
        EXPECT_EQ(result.out, "");
    }
}

TEST_F(AgentsimExitStatus, TheHelpTellsWhatEachStatusMeans) {
    const ProcessResult help = run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* meaning : {"\n  0 ", "\n  1 ", "\n  2 ", "\n  3 ", "\n  128+N "}) {
        EXPECT_THAT(help.out, HasSubstr(meaning));
    }
}

using AgentsimPlugin = Agentsim;

TEST_F(AgentsimPlugin, ANameWithoutASlashIsAFileInTheCurrentFolder) {
    fs::copy_file(NORVANE_PLUGIN_PATH, folder() / "my-plugin.so");
    ProcessSetup here = setup();
    here.folder = folder().string();
    const ProcessResult local =
        run({"--tv", "empty", "--plugin", "my-plugin.so", "password"}, here);
    EXPECT_EQ(local.exitCode, 0) << local.err;

    // A library of the system's with that name is not what is meant.
    const ProcessResult system = run({"--plugin", "libc.so.6", "list"}, here);
    EXPECT_EQ(system.exitCode, kFailureStatus);
    EXPECT_EQ(system.err, "agentsim: no plug-in at libc.so.6\n");
}

TEST_F(AgentsimPlugin, AFileThatIsNoPlugInForThisMachineIsNamedSo) {
    const std::string foreign = NORVANE_FOREIGN_PLUGIN_PATH;
    ASSERT_FALSE(foreign.empty()) << "no compiler for another machine was found to build one "
                                     "(gcc-arm-linux-gnueabihf on x86-64)";
#if defined(__arm__)
    const std::string machines = "it is built for x86-64, and agentsim runs on 32-bit Arm\n";
#elif defined(__x86_64__)
    const std::string machines = "it is built for 32-bit Arm, and agentsim runs on x86-64\n";
#else
    const std::string machines = "it is built for 32-bit Arm, and agentsim runs on ";
#endif
    const ProcessResult other = run({"--plugin", foreign, "list"});
    EXPECT_EQ(other.exitCode, kFailureStatus);
    EXPECT_THAT(other.err, StartsWith("agentsim: " + foreign +
                                      " is not a plug-in for this machine: " + machines));

    const fs::path text = writeFile("notes.so", "not a library\n");
    const ProcessResult notElf = run({"--plugin", text.string(), "list"});
    EXPECT_EQ(notElf.exitCode, kFailureStatus);
    EXPECT_EQ(notElf.err, "agentsim: " + text.string() +
                              " is not a plug-in for this machine: it is not an ELF shared "
                              "library\n");

    const ProcessResult folderPlugin = run({"--plugin", folder().string(), "list"});
    EXPECT_EQ(folderPlugin.exitCode, kFailureStatus);
    EXPECT_EQ(folderPlugin.err, "agentsim: " + folder().string() + " is a folder, not a plug-in\n");
}

}  // namespace
