// Set-up shared by the file, screen and identity tests: a fresh simulated TV whose settings
// client has started, and the console captured.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bridge/ZelBizClient.h"
#include "support/SimulatedPlatform.h"
#include "support/StdoutCapture.h"
#include "support/TextCount.h"

namespace norvane {

using testing_support::occurrences;

class FilesTest : public testing::Test {
protected:
    testing_support::SimulatedPlatform platform;
    testing_support::StdoutCapture console;

    tvsim::Tv& tv() { return platform.tv(); }
    std::string hostPath(const std::string& tvPath) { return tv().resolvePath(tvPath); }

    void SetUp() override {
        ZelBizClient::getInstance();
        console.take();
        tv().takeJournal();
    }

    // The argument values of each action run since the previous take.
    std::vector<std::vector<std::string>> takeActions() {
        std::vector<std::vector<std::string>> actions;
        for (const tvsim::JournalEntry& entry : tv().takeJournal()) {
            if (entry.kind != tvsim::JournalEntry::Kind::Action) {
                continue;
            }
            actions.emplace_back();
            for (const auto& record : entry.arguments) {
                actions.back().push_back(record.value);
            }
        }
        return actions;
    }
};

}  // namespace norvane
