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

namespace norvane {

inline size_t timesPrinted(const std::string& output, const std::string& text) {
    size_t count = 0;
    for (size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + 1)) {
        ++count;
    }
    return count;
}

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
