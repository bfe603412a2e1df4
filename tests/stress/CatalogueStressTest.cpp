// The whole command catalogue from several agent threads at once while the viewer switches
// remote support on and off, asks for session codes and the agent's session changes state. Meant
// for the ThreadSanitizer build (checks/stress.sh): a data race or a lock-order inversion
// anywhere in the plug-in or the simulated platforms ends the run with a report, a deadlock
// trips the watchdog. The run is bounded by iteration counts, not by time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "NorvaneExports.h"
#include "Watchdog.h"
#include "ZelLinuxApp.h"
#include "support/AgentJson.h"
#include "support/SimulatedPlatform.h"
#include "support/StdoutCapture.h"
#include "zel/core/DeviceValues.h"
#include "zel/json/ZelJson.h"
#include "zel/sv/CommandBase.h"
#include "zelsim/HostSim.h"

namespace norvane {
namespace {

using testing_support::parseJson;

using testing::IsEmpty;

constexpr int kCommandThreads = 4;
constexpr int kCatalogueRounds = 80;  // per command thread, every command each round
constexpr int kMenuRounds = 100;
constexpr int kFlicksPerMenuRound = 6;
constexpr int kAgentRounds = 40;
// Far above the run's time under ThreadSanitizer on two cores, far below the test's time-out.
constexpr std::chrono::seconds kWatchdogLimit{60};
constexpr size_t kCatalogueSize = 18;
constexpr size_t kMostProblemsKept = 20;

// What each command executes with, by id: a complete, valid document wherever the command reads
// one. The log download asks for the second chunk, which runs no log tool.
const std::map<std::string, const char*>& executeInputs() {
    static const std::map<std::string, const char*> inputs = {
        {"7A31B2_LIVE_SUPPORT_NORVNE_SYSTEM_INFO_DIAGNOSTIC", "{}"},
        {"7A31B2_LIVE_SUPPORT_NORVNE_PICTURE_DIAGNOSTIC", "{}"},
        {"7A31B2_LIVE_SUPPORT_NORVNE_SOUND_DIAGNOSTIC", "{}"},
        {"7A31B2_LIVE_SUPPORT_NORVNE_HDMI_DIAGNOSTIC", "{}"},
        {"7A31B2_LIVE_SUPPORT_NORVNE_TV_DIAGNOSTIC", "{}"},
        {"FFFFFF_LIVE_SUPPORT_NETWORK_DIAGNOSTICS", "{}"},
        {"7A31B2_LIVE_SUPPORT_NORVNE_BT_DIAGNOSTIC", "{}"},
        {"7A31B2_LIVE_SUPPORT_PICTURE_DIAGNOSE_TOOL",
         R"({"PICTURE_MODE": "Vivid", "OVERSCAN": true, "COLOUR_SATURATION": 60,
             "COLOUR_TEMPERATURE": "High", "ADAPTIVE_CONTRAST": "Off",
             "NOISE_REDUCTION": "High"})"},
        {"7A31B2_LIVE_SUPPORT_SOUND_SETTINGS",
         R"({"VOLUME_NUM": 25, "MUTE": "Unmute", "SOUND_MODE": "Standard",
             "HEADPHONE_SPEAKER": "Headphone with Speakers", "AUDIO_OUTPUT": "TV Speaker",
             "LIP_SYNC": 3})"},
        {"7A31B2_LIVE_SUPPORT_DTV_DIAGNOSTIC_TOOL",
         R"({"HBBTV_FLAG": true, "AUDIO_LANGUAGE_LIST": "English"})"},
        {"7A31B2_LIVE_SUPPORT_SOURCE_CHANGE_TOOL", R"({"SOURCE_LIST": "HDMI1"})"},
        {"7A31B2_LIVE_SUPPORT_OTA_TOOL", "{}"},
        {"7A31B2_LIVE_SUPPORT_PQ_AQ_RESTORE", R"({"PQ_RESTORE": "Yes", "AQ_RESTORE": "Yes"})"},
        {"7A31B2_LIVE_SUPPORT_PQ_AQ_RESET", R"({"PQ_RESET": "Yes", "AQ_RESET": "Yes"})"},
        {"FFFFFF_LIVE_SUPPORT_GET_DEVICE_CONFIG", R"({"DOWNLOAD_FILE_TYPE": "Log1"})"},
        {"FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON", R"({"BUTTONS": ["VOL_UP", "VOL_MUTE", "UP"]})"},
        {"FFFFFF_LIVE_SUPPORT_GET_DEVICE_INFO", "{}"},
        {"FFFFFF_LIVE_SUPPORT_RESET_FACTORY_DEFAULTS", "{}"},
    };
    return inputs;
}

// The three result codes of one pass over a command, each operation on a handler of its own as
// the agent makes them.
struct Results {
    int32_t description = -1;
    int32_t get = -1;
    int32_t execute = -1;
    bool described = false;  // the descriptor document came back as a non-empty object

    bool operator==(const Results& other) const {
        return description == other.description && get == other.get && execute == other.execute &&
               described == other.described;
    }
};

std::string describeResults(const Results& results) {
    std::ostringstream text;
    text << "description " << results.description << (results.described ? "" : " (empty)")
         << ", get " << results.get << ", execute " << results.execute;
    return text.str();
}

Results runCommand(Zel::Sv::CommandBase& command, const ZelJson::Value& input) {
    Results results;
    {
        const std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
        ZelJson::Value description(ZelJson::objectValue);
        results.description = handler->descriptionHandler(description);
        results.described = description.isObject() && !description.empty();
    }
    {
        const std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
        ZelJson::Value reply(ZelJson::objectValue);
        results.get = handler->getHandler(ZelJson::Value(ZelJson::objectValue), reply);
    }
    {
        const std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
        ZelJson::Value output(ZelJson::objectValue);
        results.execute = handler->executeHandler(input, output);
    }
    return results;
}

// One agent session state as ZelGetStatus reports it, and what starting a session returns.
struct ScriptedSession {
    int32_t initialized;
    int32_t state;
    int32_t initResult;
};

// Idle, code issued, connected, disconnected, agent down, init network and server errors, update
// available: every branch of the session controller's poll and request paths.
constexpr std::array<ScriptedSession, 8> kSessionScript = {{
    {1, 1, 0},
    {1, 4, 0},
    {1, 5, 0},
    {1, 6, 0},
    {0, 1, 0},
    {1, 1, 1},
    {1, 1, 3},
    {1, 7, 0},
}};

// What the menu may show once a code request has been answered. A factory reset run by a
// command thread may blank it meanwhile.
const std::set<std::string>& menuAnswers() {
    static const std::set<std::string> answers = {
        "123456", "networkError", "serverError", "connectedAlready", "",
    };
    return answers;
}

// Where each thread is, for the watchdog's report.
struct Progress {
    std::atomic<int> round{0};
    std::atomic<int> step{-1};
};

// What the threads found wrong, kept for one report after the run.
class Problems {
public:
    void add(const std::string& problem) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (problems_.size() < kMostProblemsKept) {
            problems_.push_back(problem);
        }
    }
    std::vector<std::string> take() {
        std::lock_guard<std::mutex> lock(mutex_);
        return std::exchange(problems_, {});
    }

private:
    std::mutex mutex_;
    std::vector<std::string> problems_;
};

class CatalogueStressTest : public testing::Test {
protected:
    // Time 10000 times faster: the 3-second poll comes every 0.3 ms, so poll threads start,
    // run and stop all through the run, and a 60-second code wait lasts 6 ms.
    testing_support::SimulatedPlatform platform{10000.0};
    // The console log of thousands of commands would bury a failure report.
    testing_support::StdoutCapture console;
    std::vector<Zel::Sv::CommandBase*> catalogue;
    std::vector<ZelJson::Value> inputs;  // by catalogue position
    std::vector<Results> expected;       // by catalogue position, from one quiet pass
    Problems problems;
    std::map<std::string, int> answersShown;  // by the menu after its code requests
    int64_t handlesAtStart = 0;

    void SetUp() override {
        platform.tv().loadDefaultProfile();
        // A smaller screen keeps the frames of the agent thread cheap under the sanitizer.
        platform.tv().setScreenSize(1280, 720);
        initialize();
        platform.tv().waitUntilDelivered();
        catalogue = createCommandsExt();
        ASSERT_EQ(catalogue.size(), kCatalogueSize);
        for (Zel::Sv::CommandBase* command : catalogue) {
            const auto found = executeInputs().find(command->getId());
            ASSERT_NE(found, executeInputs().end()) << "no input for " << command->getId();
            inputs.push_back(parseJson(found->second));
        }
        // Results depend on the command and its input, not on what runs beside it.
        for (size_t at = 0; at < catalogue.size(); ++at) {
            expected.push_back(runCommand(*catalogue[at], inputs[at]));
            if ((catalogue[at]->getHandlerMask() & Zel::Sv::kHandlesDescription) != 0) {
                EXPECT_TRUE(expected.back().described) << catalogue[at]->getId();
                EXPECT_EQ(expected.back().description, 0) << catalogue[at]->getId();
            }
            EXPECT_EQ(expected.back().execute, 0) << catalogue[at]->getId();
        }
        drainRecords();
        platform.tv().waitUntilDelivered();
        handlesAtStart = platform.tv().openHandles();
    }

    void TearDown() override {
        StopZelSessionSupport();
        platform.tv().waitUntilDelivered();
        for (Zel::Sv::CommandBase* command : catalogue) {
            delete command;
        }
    }

    // The simulators record every call; dropping the records keeps memory flat over the run.
    void drainRecords() {
        zelsim::takeCalls();
        zelsim::takeMessages();
        zelsim::takeLogLines();
        zelsim::takeTraceEvents();
        platform.tv().takeJournal();
    }

    // Every command in turn, `kCatalogueRounds` times, starting at a different command on each
    // thread so that the threads run different commands side by side.
    void runCatalogue(int thread, Progress& progress) {
        for (int round = 0; round < kCatalogueRounds; ++round) {
            progress.round = round;
            for (size_t offset = 0; offset < catalogue.size(); ++offset) {
                const size_t at = (offset + static_cast<size_t>(thread) * 5) % catalogue.size();
                progress.step = static_cast<int>(at);
                const Results results = runCommand(*catalogue[at], inputs[at]);
                if (!(results == expected[at])) {
                    problems.add(catalogue[at]->getId() + ": " + describeResults(results) +
                                 " instead of " + describeResults(expected[at]));
                }
            }
        }
        progress.step = -1;
    }

    // The viewer in the TV menu and the agent's session: a few quick flicks of the switch, then
    // support on, a code request, a new session state, another request, and support off every
    // other round.
    void runMenu(Progress& progress) {
        tvsim::Tv& tv = platform.tv();
        for (int round = 0; round < kMenuRounds; ++round) {
            progress.round = round;
            progress.step = 0;
            // A viewer flicking the switch and asking again before the TV has delivered the
            // first change: poll threads start and stop back to back.
            for (int flick = 0; flick < kFlicksPerMenuRound; ++flick) {
                tv.set(kEnableKey, flick % 2 == 0 ? kRemoteSupportOn : kRemoteSupportOff);
                tv.set(kSessionCodeKey, std::string(flick % 3 == 0 ? "session0" : "menu"));
            }
            tv.set(kEnableKey, kRemoteSupportOn);
            tv.waitUntilDelivered();
            progress.step = 1;
            askForCode();
            progress.step = 2;
            const ScriptedSession& scripted = kSessionScript[round % kSessionScript.size()];
            zelsim::Session session = zelsim::session();
            session.initialized = scripted.initialized;
            session.state = scripted.state;
            session.initResult = scripted.initResult;
            zelsim::setSession(session);
            progress.step = 3;
            askForCode();
            if (round % 2 == 1) {
                progress.step = 4;
                tv.set(kEnableKey, kRemoteSupportOff);
                tv.waitUntilDelivered();
            }
            drainRecords();
        }
        progress.step = -1;
    }

    void askForCode() {
        tvsim::Tv& tv = platform.tv();
        tv.set(kSessionCodeKey, std::string("session0"));
        tv.waitUntilDelivered();
        const tvsim::Value shown = tv.get(kSessionCodeKey);
        const std::string* text = std::get_if<std::string>(&shown);
        if (text == nullptr || menuAnswers().count(*text) == 0) {
            problems.add("the menu shows \"" + (text ? *text : std::string("?")) +
                         "\" after a code request");
            return;
        }
        ++answersShown[*text];
    }

    // The agent's own calls beside the commands: password, device values, screen frames.
    void runAgentExports(Progress& progress) {
        const std::string password = GetZelPassword();
        std::vector<unsigned char> frame(size_t{1920} * 1080 * 4);
        for (int round = 0; round < kAgentRounds; ++round) {
            progress.round = round;
            progress.step = 0;
            if (GetZelPassword() != password) {
                problems.add("the password changed during the run");
            }
            progress.step = 1;
            const std::unique_ptr<Zel::Core::DeviceValues> values(createDeviceValuesExt("TV"));
            if (values->getDeviceModel().empty() || values->getPlatform().empty()) {
                problems.add("empty device values");
            }
            progress.step = 2;
            const int32_t result =
                fillVideoBufferExt(frame.data(), static_cast<uint32_t>(frame.size()));
            const int32_t width = getVideoWidthExt();
            const int32_t height = getVideoHeightExt();
            if ((result != 0 && result != -1) ||
                !((width == 1280 && height == 720) || (width == 1920 && height == 1080))) {
                problems.add("frame " + std::to_string(result) + " at " + std::to_string(width) +
                             "x" + std::to_string(height));
            }
        }
        progress.step = -1;
    }

    // Runs the catalogue on kCommandThreads threads beside the menu thread and, when asked, the
    // agent's export thread, all released together; the watchdog guards the whole run.
    void runStress(bool withAgentExports) {
        std::array<Progress, kCommandThreads> commandProgress;
        Progress menuProgress;
        Progress agentProgress;
        std::atomic<int> waiting{0};
        const int threadCount = kCommandThreads + 1 + (withAgentExports ? 1 : 0);
        auto startTogether = [&] {
            ++waiting;
            while (waiting.load() < threadCount) {
                std::this_thread::yield();
            }
        };
        const stress::Watchdog watchdog(kWatchdogLimit, [&] {
            std::ostringstream report;
            for (int thread = 0; thread < kCommandThreads; ++thread) {
                const int step = commandProgress[thread].step;
                report << "command thread " << thread << ": round " << commandProgress[thread].round
                       << ", " << (step < 0 ? std::string("done") : catalogue[step]->getId())
                       << "\n";
            }
            report << "menu thread: round " << menuProgress.round << ", step " << menuProgress.step;
            if (withAgentExports) {
                report << "\nagent thread: round " << agentProgress.round << ", step "
                       << agentProgress.step;
            }
            return report.str();
        });
        std::vector<std::thread> threads;
        for (int thread = 0; thread < kCommandThreads; ++thread) {
            threads.emplace_back([&, thread] {
                startTogether();
                runCatalogue(thread, commandProgress[thread]);
            });
        }
        threads.emplace_back([&] {
            startTogether();
            runMenu(menuProgress);
        });
        if (withAgentExports) {
            threads.emplace_back([&] {
                startTogether();
                runAgentExports(agentProgress);
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        StopZelSessionSupport();
        platform.tv().waitUntilDelivered();
        drainRecords();
    }

    // What every run must leave: no status record of the agent unreleased and no settings
    // handle left connected, once the poll thread has gone.
    void expectNothingLeftBehind() {
        bool released = false;
        for (int attempt = 0; attempt < 2500 && !released; ++attempt) {
            released = zelsim::unreleasedStatusRecords() == 0;
            if (!released) {
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        }
        EXPECT_TRUE(released) << zelsim::unreleasedStatusRecords() << " status records";
        EXPECT_EQ(platform.tv().openHandles(), handlesAtStart);
    }

    // At least one request got through to a code, or the run never reached the paths that
    // hand codes out while commands run.
    void expectCodesHandedOut() {
        std::string tally;
        for (const auto& [answer, count] : answersShown) {
            tally += " \"" + answer + "\": " + std::to_string(count);
        }
        EXPECT_GT(answersShown["123456"], 0) << "answers shown:" << tally;
    }
};

TEST_F(CatalogueStressTest, FourAgentThreadsRunTheCatalogueWhileSessionsComeAndGo) {
    runStress(false);
    EXPECT_THAT(problems.take(), IsEmpty());
    expectCodesHandedOut();
    expectNothingLeftBehind();
}

TEST_F(CatalogueStressTest, FramesPasswordAndDeviceValuesAlongsideTheCatalogueAndSessions) {
    runStress(true);
    EXPECT_THAT(problems.take(), IsEmpty());
    expectCodesHandedOut();
    expectNothingLeftBehind();
}

}  // namespace
}  // namespace norvane
