// How agentsim shows things to a person reading a terminal.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "Agent.h"

namespace agentsim {

// A console-log or agent-log text on one line: without the tab that frames it, its line feeds
// shown as \n.
std::string readable(const std::string& framed);

void printHeading(std::FILE* out, const std::string& title);
void printCatalogue(std::FILE* out, const std::vector<CommandSummary>& catalogue);
// The plug-in's console lines and the agent log lines since the previous call, indented.
void printPluginLogs(std::FILE* out, Agent& agent);

}  // namespace agentsim
