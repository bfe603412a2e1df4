// agentsim: plays the support agent. Loads the TV plug-in as the agent does and lets a person or
// a script drive it against a simulated TV.
#include <cstdio>
#include <functional>
#include <map>
#include <stdexcept>

#include "Agent.h"
#include "Commands.h"
#include "Options.h"
#include "SimulatedTv.h"

namespace {

using agentsim::Agent;
using agentsim::Options;

struct Command {
    std::function<int(Agent&, const Options&)> run;
    const char* help;
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
          "NAME-after-keys.png).\n"}},
        {"list",
         {agentsim::runList,
          "usage: agentsim [options] list\n\nThe command catalogue as a table: number, id, "
          "kind, timeout, handler mask, category, name.\n"}},
        {"password",
         {agentsim::runPassword,
          "usage: agentsim [options] password\n\nThe agent access password the plug-in "
          "generates for this TV.\n"}},
        {"describe",
         {agentsim::runDescribe,
          "usage: agentsim [options] describe ID|NUMBER\n\nThe command's descriptor document "
          "and result code.\n"}},
        {"get",
         {agentsim::runGet,
          "usage: agentsim [options] get ID|NUMBER [JSON]\n\nThe command's current values "
          "(its get operation) for an optional request document.\n"}},
        {"exec",
         {agentsim::runExecute,
          "usage: agentsim [options] exec ID|NUMBER [JSON]\n\nExecutes the command with an "
          "input document (default {}) and shows its output and result code.\n"}},
        {"screen",
         {agentsim::runScreen,
          "usage: agentsim [options] screen FILE.png\n\nSaves what the TV shows now (its "
          "source's picture, with any menu or on-screen display) as a PNG picture: fetches "
          "frames through the plug-in until one arrives.\n"}},
        {"run",
         {agentsim::runScript,
          "usage: agentsim [options] run FILE|-\n\nThe scripted runner: one JSON request per "
          "line (blank lines skipped), one JSON answer per request with its \"step\" (the "
          "line number) and either \"error\" or the op's results. Ops: init, tv.set, tv.get, "
          "tv.fault, tv.screen, tv.file, tv.stat, tv.read, journal, list, describe, get, exec, "
          "password, deviceValues, videoSize, gstreamerPath, frame, identity, host.session, "
          "host.set, host.calls, wait, logs.\n"}},
        {"device-values",
         {agentsim::runDeviceValues,
          "usage: agentsim [options] device-values\n\nThe model and platform values the "
          "plug-in reports.\n"}},
    };
    return table;
}

}  // namespace

int main(int argc, char** argv) {
    try {
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
            return 0;
        }
        agentsim::SimulatedTv tv(options.tv);
        Agent agent(options.pluginPath);
        const int status = found->second.run(agent, options);
        std::fflush(agent.out());
        return status;
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
