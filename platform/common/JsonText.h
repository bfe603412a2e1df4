// JSON text parsing that reports where a document goes wrong, for the simulators' inputs
// (TV profiles, agentsim scripts).
#pragma once

#include <json/value.h>

#include <string>

namespace simjson {

struct ParseError {
    int line = 0;    // from 1
    int column = 0;  // from 1
    std::string message;
};

// Strict parse of one JSON document. On failure returns false and fills `error` with the place
// of the first problem.
bool parse(const std::string& text, Json::Value& root, ParseError& error);

// One-line, compact rendering (no trailing newline).
std::string compact(const Json::Value& value);
// Indented rendering for people.
std::string pretty(const Json::Value& value);

}  // namespace simjson
