#include "ScriptRunner.h"

#include <cinttypes>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "JsonText.h"
#include "Output.h"
#include "Screen.h"
#include "ScriptValues.h"
#include "tvsim/TvSim.h"
#include "zel/core/Base64Util.h"
#include "zelsim/HostSim.h"

namespace agentsim {
namespace {

namespace fs = std::filesystem;

constexpr size_t kMaxBase64Bytes = 1024 * 1024;
constexpr int64_t kMaxFrameBytes = 256LL * 1024 * 1024;
// A "wait" lasts at most one simulated day.
constexpr double kLongestWaitSeconds = 86400;
// A longer request line is answered with an error and skipped unread.
constexpr size_t kLongestLine = 16 * 1024 * 1024;

const Json::Value& member(const Json::Value& request, const char* name) {
    const Json::Value* found = request.find(name, name + std::strlen(name));
    if (found == nullptr) {
        throw StepError(std::string("missing \"") + name + "\"");
    }
    return *found;
}

std::string stringMember(const Json::Value& request, const char* name) {
    const Json::Value& value = member(request, name);
    if (!value.isString()) {
        throw StepError(std::string("\"") + name + "\" must be a string");
    }
    return value.asString();
}

int32_t intMember(const Json::Value& request, const char* name) {
    const Json::Value& value = member(request, name);
    if (!value.isInt()) {
        throw StepError(std::string("\"") + name + "\" must be a 32-bit integer");
    }
    return value.asInt();
}

double numberMember(const Json::Value& request, const char* name) {
    const Json::Value& value = member(request, name);
    if (!value.isNumeric()) {
        throw StepError(std::string("\"") + name + "\" must be a number");
    }
    return value.asDouble();
}

// Sets `field` from the member `name` when the request has it, read by `read`; a member left out
// keeps the field as it was.
template <typename Field, typename Read>
void takeIfPresent(const Json::Value& request, const char* name, Field& field, Read read) {
    if (request.isMember(name)) {
        field = read(request, name);
    }
}

// A TV path of the request, placed inside the simulated TV's filesystem; one that would leave
// it is refused.
fs::path insideTheTv(const Json::Value& request, const char* name) {
    const std::string path = stringMember(request, name);
    if (path.empty() || path[0] != '/') {
        throw StepError(std::string("\"") + name + "\" must be an absolute TV path");
    }
    try {
        return tvsim::Tv::instance().resolvePathInside(path);
    } catch (const tvsim::PathError& error) {
        throw StepError(error.what());
    }
}

fs::path tvPath(const Json::Value& request) {
    return insideTheTv(request, "path");
}

// Sets `answer[name]` to what was taken from a record that keeps only its newest entries, and
// says how many older ones it dropped, when it did.
template <typename Entry, typename Convert>
void putTaken(Json::Value& answer, const char* name, const std::vector<Entry>& taken,
              uint64_t dropped, Convert convert) {
    Json::Value& list = answer[name] = Json::Value(Json::arrayValue);
    for (const Entry& entry : taken) {
        list.append(convert(entry));
    }
    if (dropped > 0) {
        answer["dropped"][name] = Json::Value::UInt64(dropped);
    }
}

std::string readBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

Json::Value withResult(int32_t result, const char* documentName, const Json::Value& document) {
    Json::Value answer(Json::objectValue);
    answer["result"] = result;
    answer[documentName] = document;
    return answer;
}

Json::Value object(const Json::Value& request, const char* name) {
    const Json::Value* found = request.find(name, name + std::strlen(name));
    return found != nullptr ? *found : Json::Value(Json::objectValue);
}

// Reads one line into `line`, at most kLongestLine bytes of it; `whole` tells whether it all
// fitted (the rest is skipped). False at the end of the script.
bool readLine(std::istream& script, std::string& line, bool& whole) {
    line.clear();
    whole = true;
    std::streambuf* input = script.rdbuf();
    for (;;) {
        const int next = input->sbumpc();
        if (next == std::char_traits<char>::eof()) {
            return !line.empty() || !whole;
        }
        if (next == '\n') {
            return true;
        }
        if (line.size() < kLongestLine) {
            line += static_cast<char>(next);
        } else {
            whole = false;
        }
    }
}

}  // namespace

ScriptRunner::ScriptRunner(Agent& agent) : agent_(agent) {
    operations_["init"] = [this](const Json::Value&) {
        if (agent_.initialized()) {
            throw StepError("init has run already");
        }
        agent_.initialize();
        return Json::Value(Json::objectValue);
    };
    operations_["wait"] = [](const Json::Value& request) {
        const double seconds = numberMember(request, "seconds");
        if (!(seconds >= 0 && seconds <= kLongestWaitSeconds)) {
            throw StepError("\"seconds\" must be from 0 to 86400 (one simulated day)");
        }
        tvsim::Tv::instance().sleepFor(seconds);
        return Json::Value(Json::objectValue);
    };
    operations_["logs"] = [this](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        uint64_t dropped = 0;
        const std::vector<std::string> console = agent_.takeConsoleLines(&dropped);
        putTaken(answer, "console", console, dropped,
                 [](const std::string& line) { return Json::Value(line); });
        const std::vector<zelsim::LogLine> host = zelsim::takeLogLines(&dropped);
        putTaken(answer, "host", host, dropped, [](const zelsim::LogLine& line) {
            Json::Value entry(Json::objectValue);
            entry["severity"] = line.severity;
            entry["function"] = line.function;
            entry["text"] = line.text;
            return entry;
        });
        return answer;
    };
    addTvOperations();
    addHostOperations();
    addPluginOperations();
}

void ScriptRunner::addTvOperations() {
    operations_["tv.set"] = [](const Json::Value& request) {
        const std::string key = stringMember(request, "key");
        const auto value = settingFromJson(key, member(request, "value"));
        if (!value || !tvsim::Tv::instance().set(key, *value)) {
            throw StepError("\"value\" cannot be stored under " + key);
        }
        return Json::Value(Json::objectValue);
    };
    operations_["tv.get"] = [](const Json::Value& request) {
        const std::string key = stringMember(request, "key");
        if (tvsim::keyType(key) == tvsim::KeyType::Invalid) {
            throw StepError("not a setting key: " + key);
        }
        Json::Value answer(Json::objectValue);
        answer["value"] = settingToJson(tvsim::Tv::instance().get(key));
        return answer;
    };
    operations_["tv.fault"] = [this](const Json::Value& request) {
        tvsim::Tv& tv = tvsim::Tv::instance();
        if (request.isMember("proxy")) {
            if (stringMember(request, "proxy") != "fail") {
                throw StepError("\"proxy\" takes \"fail\"");
            }
            if (agent_.initialized()) {
                throw StepError("a proxy fault must come before init");
            }
            tv.setProxyStartFails(true);
        } else if (request.isMember("capture")) {
            const std::string capture = stringMember(request, "capture");
            if (capture != "on" && capture != "off") {
                throw StepError("\"capture\" takes \"on\" or \"off\"");
            }
            tv.setCaptureEnabled(capture == "on");
        } else {
            const std::string key = stringMember(request, "key");
            if (request.isMember("connect")) {
                tv.setConnectStatus(key, intMember(request, "connect"));
            } else if (request.isMember("write")) {
                tv.setWriteStatus(key, intMember(request, "write"));
            } else {
                throw StepError("a key fault needs \"connect\" or \"write\"");
            }
        }
        return Json::Value(Json::objectValue);
    };
    operations_["tv.screen"] = [](const Json::Value& request) {
        const int32_t width = intMember(request, "width");
        const int32_t height = intMember(request, "height");
        try {
            tvsim::Tv::instance().setScreenSize(width, height);
        } catch (const std::invalid_argument&) {
            throw StepError("\"width\" and \"height\" must be from 1 to " +
                            std::to_string(tvsim::Tv::largestScreenSide()));
        }
        return Json::Value(Json::objectValue);
    };
    operations_["tv.file"] = [](const Json::Value& request) {
        const fs::path path = tvPath(request);
        if (request.isMember("remove")) {
            std::error_code ignored;
            fs::remove(path, ignored);
            return Json::Value(Json::objectValue);
        }
        std::string bytes;
        if (request.isMember("text")) {
            bytes = stringMember(request, "text");
        } else {
            size_t length = 0;
            const std::string text = stringMember(request, "base64");
            unsigned char* decoded = Zel::Core::Base64Util::Decode(text, length);
            if (decoded == nullptr) {
                throw StepError("\"base64\" is not valid base64");
            }
            bytes.assign(reinterpret_cast<char*>(decoded), length);
            std::free(decoded);
        }
        std::error_code error;
        fs::create_directories(path.parent_path(), error);
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file << bytes;
        if (error || !file.flush()) {
            throw StepError("cannot write " + stringMember(request, "path"));
        }
        return Json::Value(Json::objectValue);
    };
    operations_["tv.stat"] = [](const Json::Value& request) {
        const fs::path path = tvPath(request);
        std::error_code error;
        const bool exists = fs::is_regular_file(path, error);
        Json::Value answer(Json::objectValue);
        answer["exists"] = exists;
        answer["size"] = Json::Value::UInt64(exists ? fs::file_size(path, error) : 0);
        return answer;
    };
    operations_["tv.read"] = [](const Json::Value& request) {
        const fs::path path = tvPath(request);
        std::error_code error;
        Json::Value answer(Json::objectValue);
        answer["exists"] = fs::is_regular_file(path, error);
        const std::string bytes = answer["exists"].asBool() ? readBytes(path) : std::string();
        answer["size"] = Json::Value::UInt64(bytes.size());
        answer["sha256"] = sha256Hex(bytes.data(), bytes.size());
        if (answer["exists"].asBool() && bytes.size() <= kMaxBase64Bytes) {
            answer["base64"] = base64(bytes);
        }
        return answer;
    };
    operations_["journal"] = [](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        uint64_t dropped = 0;
        const std::vector<tvsim::JournalEntry> entries =
            tvsim::Tv::instance().takeJournal(&dropped);
        putTaken(answer, "entries", entries, dropped, journalEntryToJson);
        return answer;
    };
}

void ScriptRunner::addHostOperations() {
    operations_["host.session"] = [](const Json::Value& request) {
        zelsim::Session session = zelsim::session();
        takeIfPresent(request, "initialized", session.initialized, intMember);
        takeIfPresent(request, "state", session.state, intMember);
        takeIfPresent(request, "initResult", session.initResult, intMember);
        takeIfPresent(request, "codeOnInit", session.codeOnInit, stringMember);
        if (request.isMember("code")) {
            if (request["code"].isNull()) {
                session.code.reset();
            } else {
                session.code = stringMember(request, "code");
            }
        }
        zelsim::setSession(session);
        return Json::Value(Json::objectValue);
    };
    operations_["host.set"] = [](const Json::Value& request) {
        zelsim::Identity identity = zelsim::identity();
        takeIfPresent(request, "opid", identity.opid, stringMember);
        takeIfPresent(request, "esn", identity.esn, stringMember);
        takeIfPresent(request, "brand", identity.brand, stringMember);
        takeIfPresent(request, "id", identity.id, stringMember);
        takeIfPresent(request, "date", identity.date, stringMember);
        takeIfPresent(request, "uptime", identity.uptime, intMember);
        takeIfPresent(request, "speedResult", identity.speedResult, intMember);
        takeIfPresent(request, "speedUp", identity.speedUp, numberMember);
        takeIfPresent(request, "speedDown", identity.speedDown, numberMember);
        zelsim::setIdentity(identity);
        return Json::Value(Json::objectValue);
    };
    operations_["host.calls"] = [](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        uint64_t dropped = 0;
        const std::vector<zelsim::HostCall> calls = zelsim::takeCalls(&dropped);
        putTaken(answer, "calls", calls, dropped, [](const zelsim::HostCall& call) {
            Json::Value entry(Json::objectValue);
            entry["fn"] = call.function;
            if (call.argument) {
                entry["arg"] = *call.argument;
            }
            return entry;
        });
        return answer;
    };
}

void ScriptRunner::addPluginOperation(const std::string& name, Operation operation) {
    operations_[name] = [this, name, operation](const Json::Value& request) {
        if (!agent_.initialized()) {
            throw StepError("\"" + name +
                            "\" needs the plug-in started: run {\"op\":\"init\"} first");
        }
        return operation(request);
    };
}

void ScriptRunner::addPluginOperations() {
    auto command = [this](const Json::Value& request) -> Zel::Sv::CommandBase& {
        const Json::Value& id = member(request, "id");
        const std::string name = id.isInt() ? std::to_string(id.asInt()) : id.asString();
        Zel::Sv::CommandBase* found =
            id.isString() || id.isInt() ? agent_.findCommand(name) : nullptr;
        if (found == nullptr) {
            throw StepError("unknown command id " + name);
        }
        return *found;
    };
    addPluginOperation("list", [this](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        answer["commands"] = Json::Value(Json::arrayValue);
        for (const CommandSummary& summary : agent_.catalogue()) {
            answer["commands"].append(commandSummaryToJson(summary));
        }
        return answer;
    });
    addPluginOperation("describe", [this, command](const Json::Value& request) {
        const HandlerResult outcome = agent_.describe(command(request));
        return withResult(outcome.result, "doc", outcome.document);
    });
    addPluginOperation("get", [this, command](const Json::Value& request) {
        const HandlerResult outcome = agent_.get(command(request), object(request, "request"));
        return withResult(outcome.result, "doc", outcome.document);
    });
    addPluginOperation("exec", [this, command](const Json::Value& request) {
        const HandlerResult outcome = agent_.execute(command(request), object(request, "input"));
        return withResult(outcome.result, "output", outcome.document);
    });
    addPluginOperation("password", [this](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        answer["value"] = agent_.password();
        return answer;
    });
    addPluginOperation("deviceValues", [this](const Json::Value&) {
        const auto [model, platform] = agent_.deviceValues();
        Json::Value answer(Json::objectValue);
        answer["model"] = model;
        answer["platform"] = platform;
        return answer;
    });
    addPluginOperation("videoSize", [this](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        answer["width"] = agent_.plugin().getVideoWidth();
        answer["height"] = agent_.plugin().getVideoHeight();
        return answer;
    });
    addPluginOperation("gstreamerPath", [this](const Json::Value&) {
        Json::Value answer(Json::objectValue);
        answer["value"] = agent_.plugin().getGstreamerPath();
        return answer;
    });
    addPluginOperation("frame", [this](const Json::Value& request) {
        const Json::Value& size = member(request, "size");
        if (!size.isIntegral() || size.asInt64() < 0 || size.asInt64() > kMaxFrameBytes) {
            throw StepError("\"size\" must be a byte count from 0 to 256 MiB");
        }
        std::vector<unsigned char> buffer(static_cast<size_t>(size.asInt64()));
        const int32_t result = agent_.plugin().fillVideoBuffer(
            buffer.empty() ? nullptr : buffer.data(), static_cast<uint32_t>(buffer.size()));
        Json::Value answer(Json::objectValue);
        answer["result"] = result;
        answer["width"] = agent_.plugin().getVideoWidth();
        answer["height"] = agent_.plugin().getVideoHeight();
        const size_t frameBytes = frameBytesOf(answer["width"].asInt(), answer["height"].asInt());
        answer["sha256"] = sha256Hex(buffer.data(), std::min(frameBytes, buffer.size()));
        return answer;
    });
    addPluginOperation("identity", [this](const Json::Value& request) {
        if (agent_.plugin().createIdJson == nullptr) {
            throw StepError("the plug-in does not offer NvCreateNewZelIdJson");
        }
        const std::string value1 = stringMember(request, "value1");
        const std::string value2 = stringMember(request, "value2");
        Json::Value answer(Json::objectValue);
        answer["result"] = agent_.plugin().createIdJson(insideTheTv(request, "input").string(),
                                                        insideTheTv(request, "output").string(),
                                                        value1.c_str(), value2.c_str());
        return answer;
    });
}

Json::Value ScriptRunner::answer(const std::string& line) {
    Json::Value request;
    simjson::ParseError error;
    if (!simjson::parse(line, request, error)) {
        throw StepError("invalid JSON at column " + std::to_string(error.column) + ": " +
                        error.message);
    }
    if (!request.isObject()) {
        throw StepError("a request must be a JSON object");
    }
    const std::string op = stringMember(request, "op");
    const auto found = operations_.find(op);
    if (found == operations_.end()) {
        throw StepError("unknown op \"" + op + "\"");
    }
    try {
        return found->second(request);
    } catch (const StepError&) {
        throw;
    } catch (const std::exception& exception) {
        throw StepError(std::string("the plug-in failed: ") + exception.what());
    }
}

void ScriptRunner::run(std::istream& script, std::FILE* out) {
    std::string line;
    bool whole = true;
    for (uint64_t step = 1; readLine(script, line, whole); ++step) {
        if (whole && line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        Json::Value result;
        try {
            if (!whole) {
                throw StepError("the line is longer than 16 MiB");
            }
            result = answer(line);
        } catch (const StepError& error) {
            result = Json::Value(Json::objectValue);
            result["error"] = error.what();
        }
        // What the plug-in printed goes to the console record now, which keeps it bounded.
        agent_.collectConsole();
        // "step" leads each answer so that a reader can match it to its request at a glance.
        std::string members = simjson::compact(result);
        members = members.size() > 2 ? "," + members.substr(1) : "}";
        std::fprintf(out, "{\"step\":%" PRIu64 "%s\n", step, members.c_str());
        flushOrThrow(out);
    }
}

}  // namespace agentsim
