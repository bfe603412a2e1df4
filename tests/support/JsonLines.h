// A program's output of one JSON document a line, as agentsim's runner writes it.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace testing_support {

// Each line's document; a line that is no JSON document fails the test and reads as null.
std::vector<Json::Value> jsonLines(const std::string& output);

}  // namespace testing_support
