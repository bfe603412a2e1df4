// The subcommands that drive one command, the screen, or a script.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <vector>

#include "Commands.h"
#include "JsonText.h"
#include "Presentation.h"
#include "Screen.h"
#include "ScriptRunner.h"

namespace agentsim {
namespace {

Zel::Sv::CommandBase& commandNamed(Agent& agent, const Options& options) {
    Zel::Sv::CommandBase* command = agent.findCommand(options.arguments[0]);
    if (command == nullptr) {
        throw std::invalid_argument("agentsim: unknown command id " + options.arguments[0] +
                                    " (see agentsim list)");
    }
    return *command;
}

ZelJson::Value documentArgument(const Options& options) {
    if (options.arguments.size() < 2) {
        return ZelJson::Value(ZelJson::objectValue);
    }
    ZelJson::Value document;
    simjson::ParseError error;
    if (!simjson::parse(options.arguments[1], document, error)) {
        throw std::invalid_argument("agentsim: invalid JSON at column " +
                                    std::to_string(error.column) + ": " + error.message);
    }
    return document;
}

// The document and the result; the exit status says whether the result was 0.
int show(Agent& agent, const HandlerResult& outcome) {
    std::fprintf(agent.out(), "%s\nresult: %d\n", simjson::pretty(outcome.document).c_str(),
                 outcome.result);
    return outcome.result == 0 ? 0 : 1;
}

// A script file, opened; a folder or a file that cannot be read is a usage error.
std::ifstream openScript(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        throw std::invalid_argument("agentsim: the script " + path + " is a folder");
    }
    errno = 0;
    std::ifstream script(path, std::ios::binary);
    if (!script) {
        throw std::invalid_argument("agentsim: cannot read the script " + path + ": " +
                                    std::strerror(errno != 0 ? errno : ENOENT));
    }
    return script;
}

}  // namespace

int runDescribe(Agent& agent, const Options& options) {
    agent.initialize();
    return show(agent, agent.describe(commandNamed(agent, options)));
}

int runGet(Agent& agent, const Options& options) {
    agent.initialize();
    Zel::Sv::CommandBase& command = commandNamed(agent, options);
    return show(agent, agent.get(command, documentArgument(options)));
}

int runExecute(Agent& agent, const Options& options) {
    agent.initialize();
    Zel::Sv::CommandBase& command = commandNamed(agent, options);
    return show(agent, agent.execute(command, documentArgument(options)));
}

int runScreen(Agent& agent, const Options& options) {
    agent.initialize();
    if (!saveScreen(agent, options.arguments[0])) {
        std::fprintf(stderr, "agentsim: no screen frame arrived\n");
        return 1;
    }
    return 0;
}

int runScript(Agent& agent, const Options& options) {
    ScriptRunner runner(agent);
    if (options.arguments[0] == "-") {
        runner.run(std::cin, agent.out());
        return 0;
    }
    std::ifstream script = openScript(options.arguments[0]);
    runner.run(script, agent.out());
    return 0;
}

}  // namespace agentsim
