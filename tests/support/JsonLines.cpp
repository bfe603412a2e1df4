#include "support/JsonLines.h"

#include <gtest/gtest.h>

#include <sstream>

#include "JsonText.h"

namespace testing_support {

std::vector<Json::Value> jsonLines(const std::string& output) {
    std::vector<Json::Value> parsed;
    std::istringstream lines(output);
    std::string line;
    while (std::getline(lines, line)) {
        Json::Value document;
        simjson::ParseError error;
        EXPECT_TRUE(simjson::parse(line, document, error)) << line << ": " << error.message;
        parsed.push_back(document);
    }
    return parsed;
}

}  // namespace testing_support
