// The waits and pauses of the log and channel-list collection and of the screen size probe, seen
// at the exact instants around each edge on held simulated time.
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <optional>

#include "FilesTest.h"
#include "NorvaneExports.h"
#include "bridge/BizLogFiles.h"
#include "bridge/BizScreenCapture.h"
#include "support/HeldTime.h"

namespace norvane {
namespace {

namespace fs = std::filesystem;
using testing_support::finishes;
using testing_support::HeldTime;

constexpr const char* kArchive = "/OAD/zel_channel_list.zip";
constexpr const char* kChannelWait = "\t<** Getting channel list file, please wait.\n **>\n";
constexpr const char* kLogWait = "\t<** Getting log files, please wait.\n **>\n";

class FileTiming : public FilesTest {
protected:
    std::optional<HeldTime> held;

    // Time is held once the settings client has started.
    void SetUp() override {
        FilesTest::SetUp();
        fs::create_directories(hostPath("/OAD"));
        held.emplace();
    }

    // Lets time run through the one-second waits of `call`, holding at the end of each;
    // `beforeLast` runs during the last of them. The call's result, or -2 if it never ended.
    int32_t throughWaits(
        const std::function<int32_t()>& call, int waits,
        const std::function<void()>& beforeLast = [] {}) {
        HeldTime& time = *held;
        const double start = time.now();
        std::future<int32_t> result = time.inBackground(call);
        for (int wait = 1; wait <= waits; ++wait) {
            EXPECT_TRUE(time.awaitWakeupAt(start + wait)) << "wait " << wait;
            if (wait == waits) {
                beforeLast();
            }
            time.advanceTo(start + wait);
        }
        return finishes(result) ? result.get() : -2;
    }

    // Packing with no channel database: cp and zip make nothing, and the archive turns up
    // during the `wait`-th wait.
    int32_t packWithArchiveDuringWait(int wait) {
        return throughWaits([] { return BizBackupReadFile("Channel List"); }, wait,
                            [] { testing_support::writeTvFile(kArchive, "archive"); });
    }
};

// The last look, after the tenth wait, cannot be seen: a log chunk found then changes nothing,
// and an archive found then counts as missing.
TEST_F(FileTiming, TheArchiveCountsWhenFoundAfterTheNinthWaitButNotAfterTheTenth) {
    EXPECT_EQ(packWithArchiveDuringWait(9), 1);
    EXPECT_EQ(occurrences(console.take(), kChannelWait), 9u);
    fs::remove(hostPath(kArchive));
    EXPECT_EQ(packWithArchiveDuringWait(10), 0);
    EXPECT_EQ(occurrences(console.take(), kChannelWait), 10u);
}

TEST_F(FileTiming, TheFirstLogChunkIsAwaitedForTenOneSecondWaits) {
    // The tool gathers nothing, so it leaves no chunk.
    setenv("TVSIM_LOG_BYTES", "0", 1);
    EXPECT_EQ(throughWaits([] { return BizBackupReadFile("Log0"); }, 10), 0);
    unsetenv("TVSIM_LOG_BYTES");
    EXPECT_EQ(occurrences(console.take(), kLogWait), 10u);
}

TEST_F(FileTiming, RemovalsPauseOneSecond) {
    EXPECT_EQ(throughWaits([] { return BizRemoveReadFile("Log1"); }, 1), 0);
    EXPECT_EQ(throughWaits([] { return BizRemoveReadFile("Channel List"); }, 1), 0);
    EXPECT_EQ(throughWaits(BizRemoveLogFiles, 1), 0);
    EXPECT_EQ(throughWaits(BizRemoveChannelListFiles, 1), 0);
}

TEST_F(FileTiming, TheScreenSizeProbeLooksOneSecondAfterItsCapture) {
    tv().setScreenSize(1280, 720);
    EXPECT_EQ(throughWaits(BizInitScreenSize, 1, [this] { EXPECT_EQ(takeActions().size(), 1u); }),
              0);
    EXPECT_EQ(getVideoWidthExt(), 1280);
}

}  // namespace
}  // namespace norvane
