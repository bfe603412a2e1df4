// agentsim's command line: global options, then a subcommand and its arguments.
#pragma once

#include <string>
#include <vector>

#include "SimulatedTv.h"

namespace agentsim {

struct Options {
    std::string pluginPath;
    TvOptions tv;
    std::string command;
    std::vector<std::string> arguments;
    bool help = false;
};

// Throws std::invalid_argument with one line on a malformed command line.
Options parseOptions(int argc, char** argv);

extern const char* const kUsage;

}  // namespace agentsim
