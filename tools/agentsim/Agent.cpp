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

namespace {

// Each call makes a handler with create() and deletes it afterwards, as the agent does.
template <typename Call>
HandlerResult callHandler(Zel::Sv::CommandBase& command, Call call) {
    std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    HandlerResult outcome;
    outcome.document = ZelJson::Value(ZelJson::objectValue);
    outcome.result = call(*handler, outcome.document);
    return outcome;
}

}  // namespace

HandlerResult Agent::describe(Zel::Sv::CommandBase& command) {
    return callHandler(command, [](Zel::Sv::CommandHandler& handler, ZelJson::Value& document) {
        return handler.descriptionHandler(document);
    });
}

HandlerResult Agent::get(Zel::Sv::CommandBase& command, const ZelJson::Value& request) {
    return callHandler(command, [&](Zel::Sv::CommandHandler& handler, ZelJson::Value& document) {
        return handler.getHandler(request, document);
    });
}

HandlerResult Agent::execute(Zel::Sv::CommandBase& command, const ZelJson::Value& input) {
    return callHandler(command, [&](Zel::Sv::CommandHandler& handler, ZelJson::Value& document) {
        return handler.executeHandler(input, document);
    });
}

std::string Agent::password() {
    return plugin_.getPassword();
}

std::pair<std::string, std::string> Agent::deviceValues() {
    std::unique_ptr<Zel::Core::DeviceValues> values(plugin_.createDeviceValues("TV"));
    return {values->getDeviceModel(), values->getPlatform()};
}

}  // namespace agentsim
