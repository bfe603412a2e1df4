// Running inspections as the agent does, and the reports the TV states should give (one data
// file per inspection in tests/data/inspections, one member per TV state).
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "JsonText.h"
#include "zel/json/ZelJson.h"
#include "zel/sv/CommandBase.h"

namespace norvane {
namespace inspections {

// What a registered list slot function does with the list a test controls.
inline int32_t appendTo(std::vector<std::string>& list, const std::vector<std::string>& from) {
    list.insert(list.end(), from.begin(), from.end());
    return 0;
}

inline Json::Value expectedDocument(const std::string& file, const std::string& state) {
    std::ifstream stream(std::string(NORVANE_TEST_DATA_DIR) + "/inspections/" + file);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    Json::Value all;
    simjson::ParseError error;
    EXPECT_TRUE(simjson::parse(text, all, error))
        << file << ":" << error.line << ": " << error.message;
    EXPECT_TRUE(all.isMember(state)) << file << " has no member \"" << state << "\"";
    return all[state];
}

// What the agent gets back from one run: a new handler, an object to fill, any input.
template <typename Descriptor>
ZelJson::Value runInspection() {
    Descriptor command;
    std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    ZelJson::Value report(ZelJson::objectValue);
    ZelJson::Value input(ZelJson::objectValue);
    input["ignored"] = "by every inspection";
    EXPECT_EQ(handler->executeHandler(input, report), 0);
    return report;
}

// Compares whole documents, showing both in full when they differ.
#define EXPECT_REPORT(actual, file, state)                                    \
    do {                                                                      \
        const Json::Value expectedReport = expectedDocument((file), (state)); \
        const Json::Value actualReport = (actual);                            \
        EXPECT_TRUE(actualReport == expectedReport)                           \
            << (state) << "\nreported:\n"                                     \
            << simjson::pretty(actualReport) << "\nexpected:\n"               \
            << simjson::pretty(expectedReport);                               \
    } while (0)

}  // namespace inspections
}  // namespace norvane
