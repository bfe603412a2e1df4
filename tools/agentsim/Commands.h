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

namespace agentsim {

int runDescribe(Agent& agent, const Options& options);
int runGet(Agent& agent, const Options& options);
int runExecute(Agent& agent, const Options& options);
int runScreen(Agent& agent, const Options& options);
int runScript(Agent& agent, const Options& options);

}  // namespace agentsim
