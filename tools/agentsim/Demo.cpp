// The guided tour: what the plug-in does for the support agent, section by section, on the
// simulated TV.
#include <algorithm>
#include <filesystem>
#include <functional>

#include "Commands.h"
#include "JsonText.h"
#include "Presentation.h"
#include "Progress.h"
#include "Screen.h"
#include "ScriptValues.h"
#include "SessionSettings.h"
#include "SimulatedTv.h"
#include "tvsim/TvSim.h"
#include "zel/core/Base64Util.h"
#include "zelsim/HostSim.h"

namespace agentsim {
namespace {

// The session section waits for the plug-in's 3-second polls; it runs time this much faster.
constexpr double kSessionTimeScale = 50;
constexpr const char* kPictureTool = "7A31B2_LIVE_SUPPORT_PICTURE_DIAGNOSE_TOOL";
constexpr const char* kDemoSnapshot = "agentsim-demo-screen.png";

struct Section {
    const char* title;
    std::function<void(Agent&, const Options&)> show;
};

tvsim::Tv& tv() {
    return tvsim::Tv::instance();
}

void printIndented(std::FILE* out, const std::string& text) {
    size_t start = 0;
    while (start < text.size()) {
        const size_t end = std::min(text.find('\n', start), text.size());
        std::fprintf(out, "    %s\n", text.substr(start, end - start).c_str());
        start = end + 1;
    }
}

// What the plug-in wrote and ran on the TV since the last look.
void printJournal(std::FILE* out) {
    const auto entries = tv().takeJournal();
    if (entries.empty()) {
        std::fprintf(out, "  (nothing written to the TV)\n");
    }
    for (const tvsim::JournalEntry& entry : entries) {
        std::fprintf(out, "  TV <- %s\n", simjson::compact(journalEntryToJson(entry)).c_str());
    }
}

HandlerResult execute(Agent& agent, const char* id, const ZelJson::Value& input) {
    Zel::Sv::CommandBase* command = agent.findCommand(id);
    if (command == nullptr) {
        HandlerResult missing;
        missing.result = -1;
        return missing;
    }
    return agent.execute(*command, input);
}

void showStartUp(Agent& agent, const Options&) {
    agent.initialize();
    printPluginLogs(agent.out(), agent);
    std::fprintf(agent.out(), "  the TV's session-code setting now reads \"%s\"\n",
                 tvText(kSessionCodeKey).c_str());
    tv().takeJournal();
}

void showCatalogue(Agent& agent, const Options&) {
    printCatalogue(agent.out(), agent.catalogue());
    agent.takeConsoleLines();
    zelsim::takeLogLines();
}

void showIdentity(Agent& agent, const Options&) {
    const auto [model, platform] = agent.deviceValues();
    std::fprintf(agent.out(), "  device values: model %s, platform %s\n", model.c_str(),
                 platform.c_str());
    std::fprintf(agent.out(), "  access password (from the serial number and MAC): %s\n",
                 agent.password().c_str());
    agent.takeConsoleLines();
    zelsim::takeLogLines();
}

void showInspections(Agent& agent, const Options&) {
    for (const CommandSummary& command : agent.catalogue()) {
        if (command.category != "DIAGNOSTIC_COMMANDS") {
            continue;
        }
        Progress progress(agent.out(), command.name);
        const HandlerResult report =
            agent.execute(*agent.findCommand(command.id), ZelJson::Value(ZelJson::objectValue));
        progress.done("result " + std::to_string(report.result));
        printIndented(agent.out(), simjson::pretty(report.document));
    }
    tv().takeJournal();
    agent.takeConsoleLines();
    zelsim::takeLogLines();
}

void showPictureChange(Agent& agent, const Options&) {
    Zel::Sv::CommandBase* tool = agent.findCommand(kPictureTool);
    if (tool == nullptr) {
        return;
    }
    const HandlerResult before = agent.get(*tool, ZelJson::Value(ZelJson::objectValue));
    std::fprintf(agent.out(), "  current picture settings (getHandler):\n");
    printIndented(agent.out(), simjson::pretty(before.document));
    tv().takeJournal();

    ZelJson::Value input(ZelJson::objectValue);
    input["PICTURE_MODE"] = "Vivid";
    input["OVERSCAN"] = false;
    input["COLOUR_SATURATION"] = 65;
    input["COLOUR_TEMPERATURE"] = "Low";
    input["ADAPTIVE_CONTRAST"] = "High";
    input["NOISE_REDUCTION"] = "Off";
    std::fprintf(agent.out(), "  the engineer sets: %s\n", simjson::compact(input).c_str());
    const HandlerResult outcome = agent.execute(*tool, input);
    std::fprintf(agent.out(), "  executeHandler result %d; what it wrote to the TV:\n",
                 outcome.result);
    printJournal(agent.out());
    agent.takeConsoleLines();
    zelsim::takeLogLines();
}

// Where the remote-button section saves its snapshots: beside the final one, named after it.
std::string snapshotPath(const Options& options, const std::string& suffix) {
    const std::filesystem::path final = options.arguments.empty()
                                            ? std::filesystem::current_path() / kDemoSnapshot
                                            : std::filesystem::path(options.arguments[0]);
    return (final.parent_path() / (final.stem().string() + suffix + ".png")).string();
}

HandlerResult pressButtons(Agent& agent, const std::vector<std::string>& buttons) {
    ZelJson::Value input(ZelJson::objectValue);
    input["BUTTONS"] = ZelJson::Value(ZelJson::arrayValue);
    for (const std::string& button : buttons) {
        input["BUTTONS"].append(button);
    }
    std::fprintf(agent.out(), "  the engineer presses: %s\n",
                 simjson::compact(input["BUTTONS"]).c_str());
    return execute(agent, "FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON", input);
}

void showRemoteButtons(Agent& agent, const Options& options) {
    const auto volume = [] {
        return std::get<int32_t>(tv().get("marlo.sl2.i32.sound.main.volume"));
    };
    printTvScreen(agent.out());
    saveScreen(agent, snapshotPath(options, "-before-keys"));
    tv().takeJournal();
    const int32_t before = volume();
    const HandlerResult outcome = pressButtons(agent, {"VOL_UP", "MENU", "DOWN", "RIGHT", "RIGHT"});
    std::fprintf(agent.out(), "  result %d; keys sent to the TV:\n", outcome.result);
    printJournal(agent.out());
    std::fprintf(agent.out(), "  the TV's volume went from %d to %d\n", before, volume());
    printTvScreen(agent.out());
    saveScreen(agent, snapshotPath(options, "-after-keys"));
    if (Zel::Sv::CommandBase* tool = agent.findCommand(kPictureTool)) {
        const HandlerResult settings = agent.get(*tool, ZelJson::Value(ZelJson::objectValue));
        std::fprintf(agent.out(), "  the picture tool reads the picture mode back: %s\n",
                     settings.document["PICTURE_MODE"].asString().c_str());
    }
    pressButtons(agent, {"EXIT"});
    tv().takeJournal();
    agent.takeConsoleLines();
    zelsim::takeLogLines();
}

// Lets simulated time pass until `done`, showing progress; false when it never happened.
bool waitFor(Agent& agent, const std::string& what, const std::function<bool()>& done) {
    Progress progress(agent.out(), what);
    for (int second = 0; second < 30; ++second) {
        tv().waitUntilDelivered();
        if (done()) {
            progress.done("after " + std::to_string(second) + " s");
            return true;
        }
        progress.tick(std::to_string(second) + " s");
        tv().sleepFor(1);
    }
    progress.done("not within 30 s");
    return false;
}

// Keys on the TV's own remote control, in the viewer's hand.
void viewerPresses(const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        tv().pressKey(key);
    }
    tv().waitUntilDelivered();
}

void printNotifications(Agent& agent) {
    for (const tvsim::JournalEntry& entry : tv().takeJournal()) {
        if (entry.key == kSessionNotifyKey) {
            std::fprintf(agent.out(), "  TV <- notify %d\n", std::get<int32_t>(entry.value));
        }
    }
}

// The engineer's side puts the host session in `hostState`; waits until the plug-in has told the
// TV `notifyValue`.
void engineerMovesSession(Agent& agent, int32_t hostState, int32_t notifyValue) {
    zelsim::Session session = zelsim::session();
    session.state = hostState;
    zelsim::setSession(session);
    waitFor(agent, "waiting for the plug-in to notice", [notifyValue] {
        for (const auto& entry : tv().takeJournal()) {
            if (entry.key == kSessionNotifyKey && std::get<int32_t>(entry.value) == notifyValue) {
                return true;
            }
        }
        return false;
    });
}

void showSession(Agent& agent, const Options& options) {
    std::FILE* out = agent.out();
    const double userScale = options.tv.timeScale;
    tv().setTimeScale(std::max(userScale, kSessionTimeScale));
    tv().takeJournal();

    std::fprintf(out,
                 "  the viewer switches remote support on in the TV menu (MENU, UP, OK, RIGHT)\n");
    viewerPresses({"KEY_MENU", "KEY_CURSOR_UP", "KEY_OK", "KEY_CURSOR_RIGHT"});
    std::fprintf(out, "  the viewer asks for a session code (DOWN, OK)\n");
    viewerPresses({"KEY_CURSOR_DOWN", "KEY_OK"});
    waitFor(agent, "waiting for the code", [] {
        const std::string code = tvText(kSessionCodeKey);
        return code != kAskForCode && code != "sessionDefault";
    });
    std::fprintf(out, "  the TV menu shows the code: %s\n", tvText(kSessionCodeKey).c_str());
    printTvScreen(out);

    std::fprintf(out, "  the engineer connects with the code\n");
    engineerMovesSession(agent, kHostConnected, kNotifyConnected);
    std::fprintf(out, "  TV <- notify 0, then 1: the TV says an engineer is connected\n");
    printTvScreen(out);

    std::fprintf(out, "  the engineer disconnects\n");
    engineerMovesSession(agent, kHostDisconnected, kNotifyDisconnected);
    std::fprintf(out, "  TV <- notify 0, then 2: the TV says the session has ended\n");
    printTvScreen(out);

    std::fprintf(out, "  the viewer switches remote support off (UP, LEFT, EXIT)\n");
    viewerPresses({"KEY_CURSOR_UP", "KEY_CURSOR_LEFT", "KEY_EXIT"});
    printNotifications(agent);
    for (const std::string& line : agent.takeConsoleLines()) {
        if (line.find("Session") != std::string::npos || line.find("Remote") != std::string::npos) {
            std::string text = line;
            text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
            std::fprintf(out, "  console %s\n", text.c_str() + 1);
        }
    }
    zelsim::takeLogLines();
    tv().setTimeScale(userScale);
}

void showScreen(Agent& agent, const Options& options) {
    std::fprintf(agent.out(), "  frame size %d x %d, media libraries in %s\n",
                 agent.plugin().getVideoWidth(), agent.plugin().getVideoHeight(),
                 agent.plugin().getGstreamerPath().c_str());
    const std::string path = options.arguments.empty()
                                 ? (std::filesystem::current_path() / kDemoSnapshot).string()
                                 : options.arguments[0];
    if (!saveScreen(agent, path)) {
        std::fprintf(agent.out(), "  (no frame arrived)\n");
    }
    agent.takeConsoleLines();
    tv().takeJournal();
}

void showLogDownload(Agent& agent, const Options&) {
    ZelJson::Value input(ZelJson::objectValue);
    input["DOWNLOAD_FILE_TYPE"] = "Log0";
    Progress progress(agent.out(), "collecting the TV's log (Log0)");
    const HandlerResult outcome = execute(agent, "FFFFFF_LIVE_SUPPORT_GET_DEVICE_CONFIG", input);
    progress.done("result " + std::to_string(outcome.result));
    const std::string text = outcome.document.isString() ? outcome.document.asString() : "";
    size_t length = 0;
    unsigned char* bytes = Zel::Core::Base64Util::Decode(text, length);
    std::fprintf(agent.out(), "  %zu characters of base64, %zu bytes of log; it begins:\n",
                 text.size(), bytes != nullptr ? length : 0);
    if (bytes != nullptr) {
        const std::string log(reinterpret_cast<char*>(bytes), std::min<size_t>(length, 400));
        printIndented(agent.out(), log.substr(0, log.rfind('\n')));
        std::free(bytes);
    }
    agent.takeConsoleLines();
    zelsim::takeLogLines();
}

}  // namespace

int runDemo(Agent& agent, const Options& options) {
    std::fprintf(agent.out(),
                 "agentsim demo: the TV plug-in driven as the support agent drives it, on a "
                 "simulated TV (%s).\n",
                 options.tv.profile.empty() ? "built-in profile" : options.tv.profile.c_str());
    const Section sections[] = {
        {"Start-up: initialize()", showStartUp},
        {"Command catalogue: createCommandsExt()", showCatalogue},
        {"Device identity: createDeviceValuesExt(), GetZelPassword()", showIdentity},
        {"Inspections: one click, one report", showInspections},
        {"Picture settings: the picture diagnose tool", showPictureChange},
        {"Remote buttons: the engineer works the viewer's TV", showRemoteButtons},
        {"Support session: asked for in the TV menu", showSession},
        {"Screen snapshot: fillVideoBufferExt()", showScreen},
        {"Log download: the device configuration command", showLogDownload},
    };
    for (const Section& section : sections) {
        printHeading(agent.out(), section.title);
        section.show(agent, options);
    }
    std::fprintf(agent.out(), "\nDone.\n");
    return 0;
}

}  // namespace agentsim
