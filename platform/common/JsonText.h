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

// Arrays and objects nest at most this deep in a document that parse() accepts.
constexpr int kDeepestNesting = 64;

// Strict parse of one JSON document: an object or an array, no comments, no repeated member
// names, nothing but blanks after it, nesting at most kDeepestNesting deep. On failure returns
// false and fills `error` with the place of the first problem.
bool parse(const std::string& text, Json::Value& root, ParseError& error);

// One-line, compact rendering (no trailing newline). Text that is not valid UTF-8 is written
// with each stray byte as the four characters \xHH, so that the result is always valid JSON.
std::string compact(const Json::Value& value);
// Indented rendering for people.
std::string pretty(const Json::Value& value);

}  // namespace simjson
