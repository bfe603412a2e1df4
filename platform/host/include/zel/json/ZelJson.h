// The agent's JSON document type. Values are JsonCpp values; the reader is the agent's own.
#pragma once

#include <json/value.h>

#include <string>

namespace ZelJson {

using Value = Json::Value;
using ValueType = Json::ValueType;
constexpr ValueType nullValue = Json::nullValue;
constexpr ValueType arrayValue = Json::arrayValue;
constexpr ValueType objectValue = Json::objectValue;

class Reader {
public:
    // Parses `document` into `root`; false (with `root` untouched or partial) on malformed JSON.
    bool parse(const std::string& document, Value& root, bool collectComments = true);
    const std::string& getFormattedErrorMessages() const { return errors_; }

private:
    std::string errors_;
};

}  // namespace ZelJson
