// A started plug-in on a simulated TV whose agent session is scripted, for the session tests.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "NorvaneExports.h"
#include "ZelLinuxApp.h"
#include "support/HeldTime.h"
#include "support/SimulatedPlatform.h"
#include "support/StdoutCapture.h"

namespace norvane {

class SessionTest : public testing::Test {
protected:
    // 100 times faster: a 3-second poll takes 30 ms and a code lives 1.2 s, slow enough for a
    // sanitizer build on a loaded machine to keep up.
    testing_support::SimulatedPlatform platform{100.0};
    testing_support::StdoutCapture console;

    void SetUp() override {
        platform.tv().set("marlo.sl2.i32.local.network.available", 1);
        initialize();
        platform.tv().waitUntilDelivered();
        platform.tv().takeJournal();
        zelsim::takeCalls();
        console.take();
    }

    void TearDown() override {
        StopZelSessionSupport();
        platform.tv().waitUntilDelivered();
    }

    void setSession(int32_t initialized, int32_t state, int32_t initResult = 0) {
        zelsim::Session session = zelsim::session();
        session.initialized = initialized;
        session.state = state;
        session.initResult = initResult;
        zelsim::setSession(session);
    }

    void switchSupport(int32_t value) {
        platform.tv().set(kEnableKey, value);
        platform.tv().waitUntilDelivered();
    }

    // What the menu shows after asking for a code.
    std::string askForCode() {
        platform.tv().set(kSessionCodeKey, std::string("session0"));
        platform.tv().waitUntilDelivered();
        return std::get<std::string>(platform.tv().get(kSessionCodeKey));
    }

    static bool eventually(const std::function<bool()>& condition) {
        return testing_support::eventually(condition);
    }

    std::vector<int32_t> notifyWrites() {
        std::vector<int32_t> values;
        for (const tvsim::JournalEntry& entry : platform.tv().takeJournal()) {
            if (entry.key == kNotifyKey) {
                values.push_back(std::get<int32_t>(entry.value));
            }
        }
        return values;
    }

    // The notification writes once `count` have come (the poll thread logs a state change before
    // it writes them); what came by then after ~5 s.
    std::vector<int32_t> awaitNotifyWrites(size_t count) {
        std::vector<int32_t> values;
        eventually([&] {
            for (int32_t value : notifyWrites()) {
                values.push_back(value);
            }
            return values.size() >= count;
        });
        return values;
    }

    static std::vector<std::string> callNames(const std::vector<zelsim::HostCall>& calls) {
        std::vector<std::string> names;
        for (const zelsim::HostCall& call : calls) {
            names.push_back(call.function);
        }
        return names;
    }
};

}  // namespace norvane
