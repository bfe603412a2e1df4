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

}  // namespace agentsim
