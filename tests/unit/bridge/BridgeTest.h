// Shared set-up of the bridge tests: a fresh simulated TV whose settings client has started
// (unless a test kills the service first), the console captured, and readers of what the
// plug-in wrote.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bridge/ZelBizClient.h"
#include "support/SimulatedPlatform.h"
#include "support/StdoutCapture.h"

namespace norvane {

using IntWrite = std::pair<std::string, int32_t>;
// An action as journaled: its key, and its arguments as (tag, value).
using ActionCall = std::pair<std::string, std::vector<std::pair<int32_t, std::string>>>;

// A setting translated between numbers and labels: `labels` name the numbers `first`,
// `first` + 1, ...; other numbers read as `otherNumbers`, other labels write `otherLabels`.
struct ValueTable {
    const char* key;
    std::function<std::string()> get;
    std::function<int32_t(const std::string&)> set;
    int32_t first;
    std::vector<std::string> labels;
    std::string otherNumbers;
    int32_t otherLabels;
};

// "a, b, c": lists compare as one readable line.
inline std::string joined(const std::vector<std::string>& list) {
    std::string text;
    for (size_t index = 0; index < list.size(); ++index) {
        text += (index == 0 ? "" : ", ") + list[index];
    }
    return text;
}

class BridgeTest : public testing::Test {
protected:
    testing_support::SimulatedPlatform platform;
    testing_support::StdoutCapture console;

    tvsim::Tv& tv() { return platform.tv(); }

    // Starts the client (a no-op once started) and forgets what start-up printed and wrote.
    void SetUp() override {
        ZelBizClient::getInstance();
        console.take();
        tv().takeJournal();
    }

    std::vector<std::string> consoleLines() {
        return testing_support::splitConsoleLines(console.take());
    }

    // The integer writes since the previous take, in order (actions are skipped).
    std::vector<IntWrite> takeIntWrites() {
        std::vector<IntWrite> writes;
        for (const tvsim::JournalEntry& entry : tv().takeJournal()) {
            if (const auto* value = std::get_if<int32_t>(&entry.value);
                entry.kind == tvsim::JournalEntry::Kind::Write && value != nullptr) {
                writes.emplace_back(entry.key, *value);
            }
        }
        return writes;
    }

    // The actions since the previous take, in order (writes are skipped).
    std::vector<ActionCall> takeActions() {
        std::vector<ActionCall> actions;
        for (const tvsim::JournalEntry& entry : tv().takeJournal()) {
            if (entry.kind == tvsim::JournalEntry::Kind::Action) {
                ActionCall call{entry.key, {}};
                for (const auto& record : entry.arguments) {
                    call.second.emplace_back(record.tag, record.value);
                }
                actions.push_back(call);
            }
        }
        return actions;
    }

    // Reads every number of the table and two on each side of it; writes every label and an
    // unknown one.
    void expectTranslatesBothWays(const ValueTable& table) {
        const int32_t past = table.first + static_cast<int32_t>(table.labels.size());
        for (int32_t number = table.first - 2; number <= past + 1; ++number) {
            tv().set(table.key, number);
            const bool known = number >= table.first && number < past;
            EXPECT_EQ(table.get(), known ? table.labels[number - table.first] : table.otherNumbers)
                << table.key << " = " << number;
        }
        for (size_t index = 0; index < table.labels.size(); ++index) {
            table.set(table.labels[index]);
            EXPECT_THAT(takeIntWrites(),
                        testing::ElementsAre(IntWrite{table.key, table.first + int32_t(index)}))
                << table.labels[index];
        }
        table.set("unknown label");
        EXPECT_THAT(takeIntWrites(), testing::ElementsAre(IntWrite{table.key, table.otherLabels}));
    }
};

// The same, with the settings service dead from the start: every read and write fails.
class DeadServiceTest : public BridgeTest {
protected:
    void SetUp() override {
        tv().setProxyStartFails(true);
        BridgeTest::SetUp();
    }
};

}  // namespace norvane
