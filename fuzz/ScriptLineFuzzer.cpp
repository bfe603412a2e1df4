// agentsim's scripted runner on one request line, with the plug-in loaded as the agent loads it
// and started by an "init" line first. A StepError is the runner's answer to a request it cannot
// carry out: an expected outcome.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "Agent.h"
#include "FuzzTv.h"
#include "JsonText.h"
#include "ScriptRunner.h"

namespace {

// The identity rewrite writes wherever the script says inside the TV, its tool folder included.
constexpr const char* kHostPathOperation = "identity";
// Files in the TV's tool folder are programs that the plug-in runs. (Paths that leave the TV's
// folder are the runner's to refuse.)
constexpr const char* kToolFolder = "/usr/local/bin";
// A script sets how long it waits and how large the screen and frames are; beyond these bounds
// an input would only be slow, which is no fault.
constexpr double kMostWaitSeconds = 10;
constexpr double kMostFrameBytes = 16.0 * 1024 * 1024;

agentsim::ScriptRunner* runner = nullptr;

bool stays(const Json::Value& member, double most) {
    return !member.isNumeric() || member.asDouble() <= most;
}

bool staysInTheTvData(const Json::Value& path) {
    if (!path.isString()) {
        return true;
    }
    // The folders of the path as the TV's filesystem takes them.
    std::filesystem::path normal;
    for (const std::filesystem::path& part : std::filesystem::path(path.asString())) {
        if (part == "..") {
            normal = normal.parent_path();
        } else if (!part.empty() && part != "." && part != "/") {
            normal /= part;
        }
    }
    const std::filesystem::path tools = std::filesystem::path(kToolFolder).relative_path();
    return std::mismatch(tools.begin(), tools.end(), normal.begin(), normal.end()).first !=
           tools.end();
}

// Whether the request may run here. Lines that are no request go to the runner, which rejects
// them.
bool runsHere(const std::string& line) {
    Json::Value request;
    simjson::ParseError error;
    if (!simjson::parse(line, request, error) || !request.isObject()) {
        return true;
    }
    const Json::Value opMember = request.get("op", Json::Value());
    const std::string op = opMember.isString() ? opMember.asString() : "";
    if (op == kHostPathOperation || !staysInTheTvData(request.get("path", Json::Value()))) {
        return false;
    }
    if (op == "wait") {
        return stays(request.get("seconds", Json::Value()), kMostWaitSeconds);
    }
    if (op == "frame") {
        return stays(request.get("size", Json::Value()), kMostFrameBytes);
    }
    if (op == "tv.screen") {
        const Json::Value width = request.get("width", Json::Value());
        const Json::Value height = request.get("height", Json::Value());
        return !width.isNumeric() || !height.isNumeric() ||
               width.asDouble() * height.asDouble() * 4 <= kMostFrameBytes;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::prepareTv();
    // Both live as long as the process, as the loaded plug-in does.
    auto* agent = new agentsim::Agent(AGENTSIM_BUILT_PLUGIN);
    runner = new agentsim::ScriptRunner(*agent);
    runner->answer(R"({"op":"init"})");
    fuzzing::forgetRecords();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    if (runsHere(line)) {
        try {
            runner->answer(line);
        } catch (const agentsim::StepError&) {
        }
    }
    fuzzing::forgetRecords();
    return 0;
}
