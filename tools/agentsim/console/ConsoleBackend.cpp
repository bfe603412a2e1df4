#include "ConsoleBackend.h"

#include <cmath>
#include <sstream>

#include "JsonText.h"
#include "ScriptValues.h"
#include "SessionSettings.h"
#include "SimulatedTv.h"
#include "tvsim/TvSim.h"
#include "zelsim/HostSim.h"

namespace agentsim::console {
namespace {

// What the simulated host answers to a session start, by name.
const std::pair<const char*, int32_t> kStartAnswers[] = {
    {"ok", 0},
    {"networkError", 1},
    {"serverError", 3},
};

tvsim::Tv& tv() {
    return tvsim::Tv::instance();
}

std::string remoteSupportState(int32_t value) {
    if (value == kRemoteSupportOn) {
        return "on";
    }
    return value == kRemoteSupportOff ? "off" : "unset";
}

std::string hostStateName(int32_t state) {
    switch (state) {
        case kHostIdle:
            return "idle";
        case kHostCodeIssued:
            return "code issued, no engineer yet";
        case kHostConnected:
            return "engineer connected";
        case kHostDisconnected:
            return "engineer disconnected";
        default:
            return "state " + std::to_string(state);
    }
}

std::string startAnswerName(int32_t initResult) {
    for (const auto& [name, value] : kStartAnswers) {
        if (value == initResult) {
            return name;
        }
    }
    return "serverError";
}

std::string number(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

// A handler's result code and its document, unchanged, under `documentName`.
Json::Value withResult(const HandlerResult& outcome, const char* documentName) {
    Json::Value answer(Json::objectValue);
    answer["result"] = outcome.result;
    answer[documentName] = outcome.document;
    return answer;
}

}  // namespace

ConsoleBackend::ConsoleBackend(Agent& agent, Feed& feed) : agent_(agent), feed_(feed) {}

Zel::Sv::CommandBase& ConsoleBackend::command(const std::string& id) {
    Zel::Sv::CommandBase* found = agent_.findCommand(id);
    if (found == nullptr) {
        throw ApiError(404, "unknown command " + id);
    }
    return *found;
}

bool ConsoleBackend::knows(const std::string& id) const {
    return agent_.findCommand(id) != nullptr;
}

Json::Value ConsoleBackend::catalogue() {
    Json::Value list(Json::arrayValue);
    for (const CommandSummary& summary : agent_.catalogue()) {
        Json::Value entry = commandSummaryToJson(summary);
        entry["category"] = summary.category;
        entry["name"] = summary.name;
        const HandlerResult description = agent_.describe(command(summary.id));
        const Json::Value& document = description.document;
        entry["description"] =
            document.isObject() ? document.get("DESCRIPTION", "").asString() : std::string();
        entry["order"] = document.isObject() && document["ORDER"].isInt()
                             ? document["ORDER"]
                             : Json::Value(Json::nullValue);
        list.append(entry);
    }
    return list;
}

Json::Value ConsoleBackend::describe(const std::string& id) {
    return withResult(agent_.describe(command(id)), "document");
}

Json::Value ConsoleBackend::get(const std::string& id, const Json::Value& request) {
    return withResult(agent_.get(command(id), request), "document");
}

Json::Value ConsoleBackend::execute(const std::string& id, const Json::Value& input) {
    return withResult(agent_.execute(command(id), input), "output");
}

Json::Value ConsoleBackend::device() {
    const auto [model, platform] = agent_.deviceValues();
    Json::Value answer(Json::objectValue);
    answer["model"] = model;
    answer["platform"] = platform;
    answer["password"] = agent_.password();
    answer["videoWidth"] = agent_.plugin().getVideoWidth();
    answer["videoHeight"] = agent_.plugin().getVideoHeight();
    answer["gstreamerPath"] = agent_.plugin().getGstreamerPath();
    return answer;
}

Json::Value ConsoleBackend::state() const {
    Json::Value tvState(Json::objectValue);
    const int32_t enable = tvNumber(kRemoteSupportKey);
    tvState["remoteSupport"] = remoteSupportState(enable);
    tvState["sessionCode"] = tvText(kSessionCodeKey);
    tvState["notify"] = tvNumber(kSessionNotifyKey);
    tvState["network"] = tvNumber(kNetworkAvailableKey) != 0;

    const zelsim::Session session = zelsim::session();
    Json::Value host(Json::objectValue);
    host["initialized"] = session.initialized;
    host["state"] = session.state;
    host["stateName"] = hostStateName(session.state);
    host["code"] = session.code ? Json::Value(*session.code) : Json::Value(Json::nullValue);
    host["startAnswer"] = startAnswerName(session.initResult);

    Json::Value answer(Json::objectValue);
    answer["tv"] = tvState;
    answer["host"] = host;
    answer["timeScale"] = tv().timeScale();
    // What the TV's screen shows now, in the TV's own words (its dialogs and notices included).
    simjson::ParseError ignored;
    simjson::parse(tv().describeScreen(), answer["screen"], ignored);
    return answer;
}

void ConsoleBackend::setRemoteSupport(bool on) {
    feed_.add("console", std::string("the viewer switches remote support ") + (on ? "on" : "off") +
                             " in the TV's menu");
    tv().set(kRemoteSupportKey, on ? kRemoteSupportOn : kRemoteSupportOff);
}

void ConsoleBackend::askForSessionCode() {
    feed_.add("console", "the viewer asks for a session code in the TV's menu");
    tv().set(kSessionCodeKey, std::string(kAskForCode));
}

void ConsoleBackend::setEngineerConnected(bool connected) {
    zelsim::Session session = zelsim::session();
    const int32_t needed = connected ? kHostCodeIssued : kHostConnected;
    if (session.state != needed) {
        throw ApiError(409, connected ? "no session code is out for an engineer to use (the host "
                                        "session is " +
                                            hostStateName(session.state) + ")"
                                      : "no engineer is connected (the host session is " +
                                            hostStateName(session.state) + ")");
    }
    session.state = connected ? kHostConnected : kHostDisconnected;
    zelsim::setSession(session);
    feed_.add("console", connected ? "the engineer connects with the session code"
                                   : "the engineer disconnects");
}

void ConsoleBackend::setSessionStartAnswer(const std::string& answer) {
    for (const auto& [name, value] : kStartAnswers) {
        if (answer == name) {
            zelsim::Session session = zelsim::session();
            session.initResult = value;
            zelsim::setSession(session);
            feed_.add("console", "the agent's server will answer a session start with " + answer);
            return;
        }
    }
    throw ApiError(400, "\"answer\" must be \"ok\", \"networkError\" or \"serverError\"");
}

void ConsoleBackend::setNetwork(bool up) {
    tv().set(kNetworkAvailableKey, up ? 1 : 0);
    feed_.add("console", std::string("the TV's network goes ") + (up ? "up" : "down"));
}

void ConsoleBackend::setTimeScale(double scale) {
    if (!std::isfinite(scale) || scale < tvsim::kSlowestTimeScale ||
        scale > tvsim::kFastestTimeScale) {
        throw ApiError(400, "the time scale must lie between " + number(tvsim::kSlowestTimeScale) +
                                " and " + number(tvsim::kFastestTimeScale));
    }
    tv().setTimeScale(scale);
    feed_.add("console", "simulated time now runs " + number(scale) + " times faster");
}

}  // namespace agentsim::console
