// agentsim's console subcommand: the support console, a local web page served until Ctrl-C.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Agent.h"
#include "Options.h"

namespace agentsim {

struct ConsoleSettings {
    std::string address = "127.0.0.1";
    bool addressGiven = false;     // --listen: the console may be reachable from elsewhere
    std::optional<uint16_t> port;  // --port; 0 for any free port
};

// Throws std::invalid_argument with one line on a malformed argument.
ConsoleSettings parseConsoleArguments(const std::vector<std::string>& arguments);

int runConsole(Agent& agent, const Options& options);

extern const char* const kConsoleHelp;

}  // namespace agentsim
