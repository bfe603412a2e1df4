#include "Agent.h"

#include <memory>

#include "zel/core/DeviceValues.h"

namespace agentsim {

Agent::Agent(const std::string& pluginPath) : plugin_(loadPlugin(pluginPath)) {}

Agent::~Agent() {
    for (Zel::Sv::CommandBase* command : commands_) {
        delete command;
    }
}

void Agent::initialize() {
    plugin_.initialize();
    initialized_ = true;
}

std::vector<Zel::Sv::CommandBase*>& Agent::commands() {
    if (!commandsMade_) {
        commands_ = plugin_.createCommands();
        commandsMade_ = true;
    }
    return commands_;
}

std::vector<CommandSummary> Agent::catalogue() {
    std::vector<CommandSummary> summaries;
    int index = 0;
    for (Zel::Sv::CommandBase* command : commands()) {
        CommandSummary summary;
        summary.index = ++index;
        summary.id = command->getId();
        summary.kind = command->getKind();
        summary.timeoutMs = command->getTimeoutMs();
        summary.mask = command->getHandlerMask();
        const HandlerResult description = describe(*command);
        if (description.document.isObject()) {
            summary.category = description.document.get("TYPE", "").asString();
            summary.name = description.document.get("NAME", "").asString();
        }
        summaries.push_back(summary);
    }
    return summaries;
}

Zel::Sv::CommandBase* Agent::findCommand(const std::string& idOrNumber) {
    std::vector<Zel::Sv::CommandBase*>& list = commands();
    for (Zel::Sv::CommandBase* command : list) {
        if (command->getId() == idOrNumber) {
            return command;
        }
    }
    if (!idOrNumber.empty() && idOrNumber.find_first_not_of("0123456789") == std::string::npos &&
        idOrNumber.size() < 6) {
        const size_t number = std::stoul(idOrNumber);
        if (number >= 1 && number <= list.size()) {
            return list[number - 1];
        }
    }
    return nullptr;
}

HandlerResult Agent::describe(Zel::Sv::CommandBase& command) {
    std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    HandlerResult outcome;
    outcome.document = ZelJson::Value(ZelJson::objectValue);
    outcome.result = handler->descriptionHandler(outcome.document);
    return outcome;
}

HandlerResult Agent::get(Zel::Sv::CommandBase& command, const ZelJson::Value& request) {
    std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    HandlerResult outcome;
    outcome.document = ZelJson::Value(ZelJson::objectValue);
    outcome.result = handler->getHandler(request, outcome.document);
    return outcome;
}

HandlerResult Agent::execute(Zel::Sv::CommandBase& command, const ZelJson::Value& input) {
    std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    HandlerResult outcome;
    outcome.document = ZelJson::Value(ZelJson::objectValue);
    outcome.result = handler->executeHandler(input, outcome.document);
    return outcome;
}

std::string Agent::password() {
    return plugin_.getPassword();
}

std::pair<std::string, std::string> Agent::deviceValues() {
    std::unique_ptr<Zel::Core::DeviceValues> values(plugin_.createDeviceValues("TV"));
    return {values->getDeviceModel(), values->getPlatform()};
}

}  // namespace agentsim
