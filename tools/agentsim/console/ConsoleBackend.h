// What the console's page can do, in the agent's terms: the plug-in's commands and values
// through agentsim's agent, the viewer's TV menu through the simulated TV's settings, and the
// agent's server through the simulated host session. Every method may be called from any thread.
#pragma once

#include <json/value.h>

#include <stdexcept>
#include <string>

#include "Agent.h"
#include "Feed.h"

namespace agentsim::console {

// A request the console refuses; `status` is the HTTP status that says why.
class ApiError : public std::runtime_error {
public:
    ApiError(int status, const std::string& message)
        : std::runtime_error(message), status_(status) {}
    int status() const { return status_; }

private:
    int status_;
};

class ConsoleBackend {
public:
    ConsoleBackend(Agent& agent, Feed& feed);

    // Whether `id` names a command, by its id or its number in the catalogue.
    bool knows(const std::string& id) const;
    // The command list with each command's category, name, description and order.
    Json::Value catalogue();
    // {"result": code, "document": ...}; ApiError 404 for an unknown command.
    Json::Value describe(const std::string& id);
    Json::Value get(const std::string& id, const Json::Value& request);
    // {"result": code, "output": ...}
    Json::Value execute(const std::string& id, const Json::Value& input);
    Json::Value device();

    // The TV's remote-support menu, the agent's server and the clock, as the page shows them.
    Json::Value state() const;

    // The viewer, in the TV's menu.
    void setRemoteSupport(bool on);
    void askForSessionCode();
    // The agent's server.
    void setEngineerConnected(bool connected);
    // "ok", "networkError" or "serverError": what the host answers to the next session start.
    void setSessionStartAnswer(const std::string& answer);
    void setNetwork(bool up);
    void setTimeScale(double scale);

private:
    Zel::Sv::CommandBase& command(const std::string& id);

    Agent& agent_;
    Feed& feed_;
};

}  // namespace agentsim::console
