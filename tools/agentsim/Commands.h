// agentsim's subcommands. Each returns the process exit status.
#pragma once

#include "Agent.h"
#include "Options.h"

namespace agentsim {

int runDemo(Agent& agent, const Options& options);
int runList(Agent& agent, const Options& options);
int runPassword(Agent& agent, const Options& options);
int runDeviceValues(Agent& agent, const Options& options);

}  // namespace agentsim
