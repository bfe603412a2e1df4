// The TV's filesystem, model configuration, log tool, thread wrapper and clock.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <regex>

#include "TvTestSupport.h"
#include "csp/OsalThread.h"
#include "support/SimulatedPlatform.h"
#include "tvconfig/ConfigUtil.h"

namespace {

namespace fs = std::filesystem;
using testing_support::writeTvFile;

constexpr char kConfigFile[] = "/nvdata/model/config/config.ini";

using TvFilesystem = tvtest::TvTest;

TEST_F(TvFilesystem, PathsResolveBelowTheRoot) {
    EXPECT_EQ(tv().resolvePath("/OAD/zellogaa"), root() + "/OAD/zellogaa");
    EXPECT_FALSE(fs::exists(root() + "/OAD/zellogaa")) << "resolving creates nothing";
    EXPECT_TRUE(fs::is_directory(root() + "/OAD")) << "every set has its storage folder";
    EXPECT_TRUE(fs::is_directory(root() + "/tmp"));
    tv().setFilesystemRoot("");
    EXPECT_EQ(tv().resolvePath("/OAD/zellogaa"), "/OAD/zellogaa");
    tv().setFilesystemRoot(root() + "/");
    EXPECT_EQ(tv().resolvePath("/a"), root() + "/a");
}

using TvConfigFile = tvtest::TvTest;

TEST_F(TvConfigFile, ReadsIntegersFromTheModelConfiguration) {
    writeTvFile(kConfigFile, "[System]\nBluetoothSupport=1\nPanel=NV55\n[Audio]\nChannels = -2\n");
    tvConfig::ConfigUtil& config = tvConfig::ConfigUtil::instance();
    int32_t value = 7;
    EXPECT_TRUE(config.getIntValue(kConfigFile, "[System]", "BluetoothSupport", value));
    EXPECT_EQ(value, 1);
    EXPECT_TRUE(config.getIntValue(kConfigFile, "Audio", "Channels", value));
    EXPECT_EQ(value, -2);
}

TEST_F(TvConfigFile, FailuresLeaveTheValueAlone) {
    tvConfig::ConfigUtil& config = tvConfig::ConfigUtil::instance();
    int32_t value = 7;
    EXPECT_FALSE(config.getIntValue(kConfigFile, "[System]", "BluetoothSupport", value));
    writeTvFile(kConfigFile, "[System]\nPanel=NV55\nHuge=99999999999\n");
    EXPECT_FALSE(config.getIntValue(kConfigFile, "[System]", "BluetoothSupport", value));
    EXPECT_FALSE(config.getIntValue(kConfigFile, "[Other]", "Panel", value));
    EXPECT_FALSE(config.getIntValue(kConfigFile, "[System]", "Panel", value));
    EXPECT_FALSE(config.getIntValue(kConfigFile, "[System]", "Huge", value));
    writeTvFile(kConfigFile, "[System\nBluetoothSupport=1\n");
    EXPECT_FALSE(config.getIntValue(kConfigFile, "[System]", "BluetoothSupport", value));
    EXPECT_EQ(value, 7);
}

using TvLogTool = tvtest::TvTest;

TEST_F(TvLogTool, SplitsTheLogIntoChunksOfTheRequestedSize) {
    const std::string tool = tv().resolvePath("/usr/local/bin/ra_getlog");
    ASSERT_EQ(std::system(("TVSIM_LOG_BYTES=250000 " + tool + " 100k zellog").c_str()), 0);
    const std::string oad = tv().resolvePath("/OAD/");
    EXPECT_EQ(fs::file_size(oad + "zellogaa"), 102400u);
    EXPECT_EQ(fs::file_size(oad + "zellogab"), 102400u);
    EXPECT_EQ(fs::file_size(oad + "zellogac"), 45200u);
    EXPECT_FALSE(fs::exists(oad + "zellogad"));
}

TEST_F(TvLogTool, DefaultLogIsAFewThousandTimestampedLines) {
    const std::string tool = tv().resolvePath("/usr/local/bin/ra_getlog");
    ASSERT_EQ(std::system(("unset TVSIM_LOG_BYTES; " + tool + " 2560k zellog").c_str()), 0);
    const std::string log = testing_support::readTvFile("/OAD/zellogaa");
    EXPECT_GT(log.size(), 100000u);
    EXPECT_LT(log.size(), 2560u * 1024u);
    EXPECT_GT(std::count(log.begin(), log.end(), '\n'), 2000);
    EXPECT_TRUE(std::regex_search(log, std::regex(R"(^\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} )")));
}

void* answer(void* argument) {
    return argument;
}

TEST(TvOsalThread, CreatesARunningThread) {
    pthread_t thread;
    int value = 42;
    ASSERT_EQ(_cspOsalPOSIX_pthread_create_line(&thread, nullptr, &answer, &value, "here.cpp", 3),
              0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, &value);
}

int64_t nanoseconds(const timespec& time) {
    return static_cast<int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

int64_t realNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return nanoseconds(now);
}

using TvClock = tvtest::TvTest;

TEST_F(TvClock, SleepLetsSimulatedTimePassQuickly) {
    tv().setTimeScale(1000);
    const int64_t simulatedStart = nanoseconds(tv().monotonicNow());
    const int64_t realStart = realNanoseconds();
    tv().sleepFor(2);
    EXPECT_GE(nanoseconds(tv().monotonicNow()) - simulatedStart, 2000000000);
    EXPECT_LT(realNanoseconds() - realStart, 1000000000);  // about 2 ms
}

TEST_F(TvClock, ScaleChangesKeepTimeContinuous) {
    tv().setTimeScale(1000);
    const int64_t before = nanoseconds(tv().monotonicNow());
    tv().setTimeScale(1);
    const int64_t after = nanoseconds(tv().monotonicNow());
    EXPECT_GE(after, before);
    EXPECT_LT(after - before, 1000000000);
    EXPECT_EQ(tv().timeScale(), 1.0);
}

TEST_F(TvClock, RealTimeOfASimulatedDeadline) {
    tv().setTimeScale(1000);
    const int64_t deadline = nanoseconds(tv().monotonicNow()) + 10000000000;  // 10 s ahead
    // time_t and long are 32 bits on the TV.
    const timespec simulated{static_cast<time_t>(deadline / 1000000000),
                             static_cast<long>(deadline % 1000000000)};
    const int64_t real = nanoseconds(tv().realTimeOf(simulated));
    const int64_t ahead = real - realNanoseconds();
    EXPECT_GT(ahead, 0);
    EXPECT_LE(ahead, 10000000);  // 10 ms
}

}  // namespace
