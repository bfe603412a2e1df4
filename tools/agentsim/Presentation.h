// How agentsim shows things to a person reading a terminal.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "Agent.h"

namespace agentsim {

void printHeading(std::FILE* out, const std::string& title);
void printCatalogue(std::FILE* out, const std::vector<CommandSummary>& catalogue);
// The plug-in's console lines and the agent log lines since the previous call, indented.
void printPluginLogs(std::FILE* out, Agent& agent);

}  // namespace agentsim
