// The guided tour: what the plug-in does for the support agent, section by section, on the
// simulated TV.
#include <filesystem>
#include <functional>

#include "Commands.h"
#include "Presentation.h"
#include "Screen.h"
#include "tvsim/TvSim.h"

namespace agentsim {
namespace {

struct Section {
    const char* title;
    std::function<void(Agent&, const Options&)> show;
};

std::string tvText(const char* key) {
    const tvsim::Value value = tvsim::Tv::instance().get(key);
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::string();
}

void showStartUp(Agent& agent, const Options&) {
    agent.initialize();
    printPluginLogs(agent.out(), agent);
    std::fprintf(agent.out(), "  the TV's session-code setting now reads \"%s\"\n",
                 tvText("marlo.sl2.str.app.setting.zel.session.code").c_str());
}

void showCatalogue(Agent& agent, const Options&) {
    printCatalogue(agent.out(), agent.catalogue());
    printPluginLogs(agent.out(), agent);
}

void showIdentity(Agent& agent, const Options&) {
    const auto [model, platform] = agent.deviceValues();
    std::fprintf(agent.out(), "  device values: model %s, platform %s\n", model.c_str(),
                 platform.c_str());
    const std::string password = agent.password();
    std::fprintf(agent.out(), "  access password: %s\n",
                 password.empty() ? "(empty: no password generator registered)" : password.c_str());
    printPluginLogs(agent.out(), agent);
}

void showScreen(Agent& agent, const Options& options) {
    std::fprintf(agent.out(), "  frame size %d x %d, media libraries in %s\n",
                 agent.plugin().getVideoWidth(), agent.plugin().getVideoHeight(),
                 agent.plugin().getGstreamerPath().c_str());
    const std::string path =
        options.arguments.empty()
            ? (std::filesystem::current_path() / "agentsim-demo-screen.png").string()
            : options.arguments[0];
    if (!saveScreen(agent, path)) {
        std::fprintf(agent.out(), "  (no frame: the plug-in's frame fill is not available)\n");
    }
    agent.takeConsoleLines();
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
        {"Screen snapshot: fillVideoBufferExt()", showScreen},
    };
    for (const Section& section : sections) {
        printHeading(agent.out(), section.title);
        section.show(agent, options);
    }
    std::fprintf(agent.out(), "\nDone.\n");
    return 0;
}

}  // namespace agentsim
