#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "zel/core/Logger.h"
#include "zel/core/Mutex.h"
#include "zelsim/HostSim.h"

namespace {

constexpr int kThreads = 6;
constexpr int kRounds = 400;

template <typename Work>
void onSeveralThreads(Work work) {
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back(work, t);
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

TEST(HostConcurrency, LoggingFromSeveralThreadsKeepsEveryLineInThreadOrder) {
    zelsim::reset();
    const uint64_t testsBefore = zelsim::loggerTestCalls();
    onSeveralThreads([](int thread) {
        Zel::Core::Logger& logger = Zel::Core::Logger::Instance();
        for (int round = 0; round < kRounds; ++round) {
            Zel::Core::FunctionTrace trace("worker", "W.cpp", round, 0);
            if (logger.test(0, 0, 5)) {
                logger.log("W.cpp", thread, "worker", 0, 0, 5, "%d", round);
            }
        }
    });

    EXPECT_EQ(zelsim::loggerTestCalls() - testsBefore, uint64_t{kThreads * kRounds});
    const auto lines = zelsim::takeLogLines();
    ASSERT_EQ(lines.size(), size_t{kThreads * kRounds});
    std::vector<int> nextRound(kThreads, 0);
    for (const auto& line : lines) {
        EXPECT_EQ(std::stoi(line.text), nextRound[line.line]++);
    }
    EXPECT_EQ(zelsim::takeTraceEvents().size(), size_t{2 * kThreads * kRounds});
}

TEST(HostConcurrency, LockMutexSerialisesItsHolders) {
    Zel::Core::Mutex mutex;
    int counter = 0;
    onSeveralThreads([&](int) {
        for (int round = 0; round < kRounds; ++round) {
            Zel::Core::LockMutex lock(mutex);
            ++counter;
        }
    });
    EXPECT_EQ(counter, kThreads * kRounds);
}

}  // namespace
