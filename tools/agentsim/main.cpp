// agentsim: plays the support agent. Loads the TV plug-in as the agent does and lets a person or
// a script drive it against a simulated TV.
#include <cstdio>
#include <functional>
#include <map>
#include <stdexcept>

#include "Agent.h"
#include "Commands.h"
#include "ConsoleCommand.h"
#include "Options.h"
#include "Output.h"
#include "SimulatedTv.h"
#include "TemporaryFiles.h"

namespace {

using agentsim::Agent;
using agentsim::Options;

struct Command {
    std::function<int(Agent&, const Options&)> run;
    const char* help;  // its first line is the usage
    size_t leastArguments;
    size_t mostArguments;
};

const std::map<std::string, Command>& commands() {
    static const std::map<std::string, Command> table = {
        {"demo",
         {agentsim::runDemo,
          "usage: agentsim [options] demo [SNAPSHOT.png]\n\nA guided tour: start-up, the "
          "command catalogue, the device identity, inspections, picture settings, remote "
          "buttons working the TV's menu, a session asked for in the TV's menu and a screen "
          "snapshot (saved as agentsim-demo-screen.png unless named; the snapshots before and "
          "after the remote buttons are saved beside it, as NAME-before-keys.png and "
          "NAME-after-keys.png).\n",
          0, 1}},
        {"list",
         {agentsim::runList,
          "usage: agentsim [options] list\n\nThe command catalogue as a table: number, id, "
          "kind, timeout, handler mask, category, name.\n",
          0, 0}},
        {"password",
         {agentsim::runPassword,
          "usage: agentsim [options] password\n\nThe agent access password the plug-in "
          "generates for this TV.\n",
          0, 0}},
        {"describe",
         {agentsim::runDescribe,
          "usage: agentsim [options] describe ID|NUMBER\n\nThe command's descriptor document "
          "and result code.\n",
          1, 1}},
        {"get",
         {agentsim::runGet,
          "usage: agentsim [options] get ID|NUMBER [JSON]\n\nThe command's current values "
          "(its get operation) for an optional request document.\n",
          1, 2}},
        {"exec",
         {agentsim::runExecute,
          "usage: agentsim [options] exec ID|NUMBER [JSON]\n\nExecutes the command with an "
          "input document (default {}) and shows its output and result code.\n",
          1, 2}},
        {"screen",
         {agentsim::runScreen,
          "usage: agentsim [options] screen FILE.png\n\nSaves what the TV shows now (its "
          "source's picture, with any menu or on-screen display) as a PNG picture: fetches "
          "frames through the plug-in until one arrives.\n",
          1, 1}},
        {"run",
         {agentsim::runScript,
          "usage: agentsim [options] run FILE|-\n\nThe scripted runner: one JSON request per "
          "line (blank lines skipped), one JSON answer per request with its \"step\" (the "
          "line number) and either \"error\" or the op's results. Ops: init, tv.set, tv.get, "
          "tv.fault, tv.screen, tv.file, tv.stat, tv.read, journal, list, describe, get, exec, "
          "password, deviceValues, videoSize, gstreamerPath, frame, identity, host.session, "
          "host.set, host.calls, wait, logs.\n\n"
          "Limits: a line holds at most 16 MiB and one JSON object nested at most 64 deep; a "
          "\"wait\" lasts 0 to 86400 simulated seconds; the screen is 1 to 8192 pixels a side. "
          "TV paths (tv.file, tv.stat, tv.read, identity) stay inside the TV's filesystem: one "
          "that leaves it through \"..\" or a symbolic link is an error. journal, logs and "
          "host.calls give the newest 10000 entries of each list since the previous ask, and "
          "\"dropped\" with the number of older ones when some were not kept. Text that is not "
          "UTF-8 comes with each stray byte as \\xHH.\n\n"
          "Exit status 0 once every line is answered (an \"error\" answer included); 2 when "
          "the script cannot be read; 3 when the answers cannot be written.\n",
          1, 1}},
        {"console", {agentsim::runConsole, agentsim::kConsoleHelp, 0, 4}},
        {"device-values",
         {agentsim::runDeviceValues,
          "usage: agentsim [options] device-values\n\nThe model and platform values the "
          "plug-in reports.\n",
          0, 0}},
    };
    return table;
}

// Whether the command got as many arguments as it takes; checked before anything starts.
void requireArgumentCount(const Options& options, const Command& command) {
    const size_t count = options.arguments.size();
    if (count >= command.leastArguments && count <= command.mostArguments) {
        return;
    }
    std::string takes = std::to_string(command.leastArguments);
    if (command.mostArguments != command.leastArguments) {
        takes += " or " + std::to_string(command.mostArguments);
    }
    takes = command.mostArguments == 0   ? "no arguments"
            : command.mostArguments == 1 ? takes + " argument"
                                         : takes + " arguments";
    const std::string help = command.help;
    throw std::invalid_argument("agentsim: " + options.command + " takes " + takes + ", not " +
                                std::to_string(count) + " (" + help.substr(0, help.find('\n')) +
                                ")");
}

}  // namespace

int main(int argc, char** argv) {
    try {
        agentsim::removeTemporariesOnSignals();
        const Options options = agentsim::parseOptions(argc, argv);
        if (options.command.empty()) {
            std::fputs(agentsim::kUsage, options.help ? stdout : stderr);
            return options.help ? 0 : 2;
        }
        const auto found = commands().find(options.command);
        if (found == commands().end()) {
            std::fprintf(stderr, "agentsim: unknown command '%s' (see agentsim --help)\n",
                         options.command.c_str());
            return 2;
        }
        if (options.help) {
            std::fputs(found->second.help, stdout);
            return std::fflush(stdout) == 0 ? 0 : 3;
        }
        requireArgumentCount(options, found->second);
        agentsim::SimulatedTv tv(options.tv);
        Agent agent(options.pluginPath);
        const int status = found->second.run(agent, options);
        agentsim::flushOrThrow(agent.out());
        return status;
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 3;
    }
}
