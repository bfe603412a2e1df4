#include "Commands.h"

#include "Presentation.h"
#include "tvsim/TvSim.h"

namespace agentsim {

int runList(Agent& agent, const Options&) {
    agent.initialize();
    agent.takeConsoleLines();
    printCatalogue(agent.out(), agent.catalogue());
    return 0;
}

int runPassword(Agent& agent, const Options&) {
    agent.initialize();
    std::fprintf(agent.out(), "%s\n", agent.password().c_str());
    return 0;
}

int runDeviceValues(Agent& agent, const Options&) {
    agent.initialize();
    const auto [model, platform] = agent.deviceValues();
    std::fprintf(agent.out(), "model:    %s\nplatform: %s\n", model.c_str(), platform.c_str());
    return 0;
}

int runDemo(Agent& agent, const Options& options) {
    std::FILE* out = agent.out();
    std::fprintf(out,
                 "agentsim demo: the TV plug-in driven as the support agent drives it,\n"
                 "on a simulated TV");
    std::fprintf(out, options.tv.profile.empty() ? " (built-in profile).\n" : " (%s).\n",
                 options.tv.profile.c_str());

    printHeading(out, "Start-up: initialize()");
    agent.initialize();
    printPluginLogs(out, agent);
    std::fprintf(out, "  the TV's session-code setting now reads \"%s\"\n",
                 std::get<std::string>(
                     tvsim::Tv::instance().get("marlo.sl2.str.app.setting.zel.session.code"))
                     .c_str());

    printHeading(out, "Command catalogue: createCommandsExt()");
    printCatalogue(out, agent.catalogue());
    printPluginLogs(out, agent);

    printHeading(out, "Device values: createDeviceValuesExt()");
    const auto [model, platform] = agent.deviceValues();
    std::fprintf(out, "  model %s, platform %s\n", model.c_str(), platform.c_str());

    printHeading(out, "Access password: GetZelPassword()");
    const std::string password = agent.password();
    std::fprintf(out, "  %s\n",
                 password.empty() ? "(empty: no password generator registered)" : password.c_str());

    printHeading(out, "Screen: getVideoWidthExt() x getVideoHeightExt()");
    std::fprintf(out, "  %d x %d, media libraries in %s\n", agent.plugin().getVideoWidth(),
                 agent.plugin().getVideoHeight(), agent.plugin().getGstreamerPath().c_str());
    std::fprintf(out, "\nDone.\n");
    return 0;
}

}  // namespace agentsim
