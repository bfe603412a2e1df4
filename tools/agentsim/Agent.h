// The simulated agent: the loaded plug-in, what it printed, and the agent-side operations that
// agentsim's commands are made of.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ConsoleTap.h"
#include "Plugin.h"
#include "zel/json/ZelJson.h"
#include "zel/sv/CommandBase.h"

namespace agentsim {

struct CommandSummary {
    int index = 0;  // from 1, as the agent numbers them
    std::string id;
    int32_t kind = 0;
    int32_t timeoutMs = 0;
    int32_t mask = 0;
    std::string category;  // the descriptor's "TYPE", empty when it has none
    std::string name;      // the descriptor's "NAME", empty when it has none
};

struct HandlerResult {
    int32_t result = 0;
    ZelJson::Value document;
};

class Agent {
public:
    explicit Agent(const std::string& pluginPath);
    ~Agent();
    Agent(const Agent&) = delete;
    Agent& operator=(const Agent&) = delete;

    std::FILE* out() const { return console_.out(); }
    // The plug-in's console lines since the previous take (the newest ConsoleTap::kKeptLines;
    // `dropped`, when given, receives how many older ones were not kept).
    std::vector<std::string> takeConsoleLines(uint64_t* dropped = nullptr) {
        return console_.takeLines(dropped);
    }
    // Moves what the plug-in printed into the kept console lines.
    void collectConsole() { console_.collect(); }

    void initialize();
    bool initialized() const { return initialized_; }
    const PluginEntryPoints& plugin() const { return plugin_; }

    std::vector<CommandSummary> catalogue();
    // Finds a command by id or by its number in the catalogue; null when there is none.
    Zel::Sv::CommandBase* findCommand(const std::string& idOrNumber);
    // Each call makes a handler with create() and deletes it afterwards, as the agent does.
    HandlerResult describe(Zel::Sv::CommandBase& command);
    HandlerResult get(Zel::Sv::CommandBase& command, const ZelJson::Value& request);
    HandlerResult execute(Zel::Sv::CommandBase& command, const ZelJson::Value& input);

    std::string password();
    std::pair<std::string, std::string> deviceValues();  // model, platform

private:
    std::vector<Zel::Sv::CommandBase*>& commands();

    ConsoleTap console_;
    PluginEntryPoints plugin_;
    bool initialized_ = false;
    std::vector<Zel::Sv::CommandBase*> commands_;
    bool commandsMade_ = false;
};

}  // namespace agentsim
