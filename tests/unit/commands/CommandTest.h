// Shared set-up of the command tests: the default simulated TV with the plug-in started as the
// agent starts it, handler operations called as the agent calls them, and readers of what the
// plug-in did to the TV and told the agent's log.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/writer.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/AgentJson.h"
#include "support/SimulatedPlatform.h"
#include "support/StdoutCapture.h"
#include "zel/json/ZelJson.h"
#include "zel/sv/CommandBase.h"

namespace norvane {

// What one handler operation returned and left in its document.
struct Outcome {
    int32_t result = 0;
    ZelJson::Value document;
};

using testing_support::parseJson;
// A JSON file of tests/data/commands.
ZelJson::Value commandDataFile(const std::string& name);

class CommandTest : public testing::Test {
protected:
    testing_support::SimulatedPlatform platform;
    testing_support::StdoutCapture console;

    tvsim::Tv& tv() { return platform.tv(); }

    // Loads the default TV profile and starts the plug-in; forgets what start-up did.
    void SetUp() override;

    // Each makes a new handler with create() and deletes it afterwards, as the agent does. The
    // document handed in is an empty object, as the agent's.
    static Outcome describe(Zel::Sv::CommandBase& command);
    static Outcome get(Zel::Sv::CommandBase& command, const ZelJson::Value& request);
    static Outcome execute(Zel::Sv::CommandBase& command, const ZelJson::Value& input);

    // The TV's journal since the previous take, an entry per line: a write as key=value, an
    // action as key(argument, ...).
    std::vector<std::string> takeJournal();
    // The agent log's lines since the previous take.
    std::vector<zelsim::LogLine> takeLogLines();
    std::vector<std::string> takeLogTexts() { return platform.takeHostLogTexts(); }
};

}  // namespace norvane
