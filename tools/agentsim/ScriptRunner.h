// The scripted runner: one JSON request per input line, one JSON answer per request, in order.
// Its contract is fixed; scripts outside this project rely on it.
#pragma once

#include <cstdio>
#include <functional>
#include <istream>
#include <map>
#include <stdexcept>
#include <string>

#include <json/value.h>

#include "Agent.h"

namespace agentsim {

// A request that cannot be carried out; its message becomes the answer's "error".
class StepError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ScriptRunner {
public:
    explicit ScriptRunner(Agent& agent);

    // Answers every non-blank line of `script` on `out`; throws OutputError when an answer cannot
    // be written.
    void run(std::istream& script, std::FILE* out);
    // The answer to one request line (without its "step"); throws StepError.
    Json::Value answer(const std::string& line);

private:
    using Operation = std::function<Json::Value(const Json::Value& request)>;
    void addTvOperations();
    void addHostOperations();
    void addPluginOperations();
    // Plug-in operations need the plug-in started first.
    void addPluginOperation(const std::string& name, Operation operation);

    Agent& agent_;
    std::map<std::string, Operation> operations_;
};

}  // namespace agentsim
