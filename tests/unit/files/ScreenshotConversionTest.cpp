#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "bridge/ScreenshotConversion.h"

namespace norvane {
namespace {

constexpr unsigned char kUntouched = 0xEE;
constexpr size_t kFullHdPixels = 1920 * 1080;

std::string randomBytes(size_t count, unsigned seed) {
    std::mt19937 generator(seed);
    std::string bytes(count, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(generator());
    }
    return bytes;
}

// A screenshot file of the test's own, open for reading while the object lives.
class OpenScreenshot {
public:
    OpenScreenshot(const std::string& bytes, const std::string& name)
        : path_(testing::TempDir() + "screenshot-" + name + ".raw") {
        std::ofstream(path_, std::ios::binary) << bytes;
        file_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    }
    ~OpenScreenshot() {
        close(file_);
        std::remove(path_.c_str());
    }
    OpenScreenshot(const OpenScreenshot&) = delete;
    OpenScreenshot& operator=(const OpenScreenshot&) = delete;

    int file() const { return file_; }

private:
    std::string path_;
    int file_ = -1;
};

std::string testName() {
    return testing::UnitTest::GetInstance()->current_test_info()->name();
}

// A buffer of `size` bytes holding the first `pixels` pixels of `screenshot` with their first and
// third bytes exchanged, and untouched bytes after them.
std::vector<unsigned char> expectedBuffer(const std::string& screenshot, size_t pixels,
                                          size_t size) {
    std::vector<unsigned char> buffer(size, kUntouched);
    for (size_t at = 0; at < pixels * 4; at += 4) {
        buffer[at] = static_cast<unsigned char>(screenshot[at + 2]);
        buffer[at + 1] = static_cast<unsigned char>(screenshot[at + 1]);
        buffer[at + 2] = static_cast<unsigned char>(screenshot[at]);
        buffer[at + 3] = static_cast<unsigned char>(screenshot[at + 3]);
    }
    return buffer;
}

TEST(ScreenshotConversion, EveryCompletePixelOfAnySizeAndNothingPastIt) {
    // Small files, sizes around the block sizes a reader is likely to use, ragged ends.
    const size_t sizes[] = {0,
                            3,
                            4,
                            7,
                            32,
                            133,
                            65536 - 4,
                            65536 + 6,
                            262144 - 4,
                            262144,
                            262144 + 6,
                            524288 + 12,
                            1048576 + 1,
                            3 * 262144 + 43,
                            kFullHdPixels * 4 - 1};
    for (const size_t size : sizes) {
        SCOPED_TRACE(size);
        const std::string screenshot = randomBytes(size, static_cast<unsigned>(size));
        const OpenScreenshot open(screenshot, testName());
        std::vector<unsigned char> buffer(kFullHdPixels * 4, kUntouched);
        EXPECT_EQ(convertScreenshot(open.file(), kFullHdPixels, buffer.data()), size / 4);
        EXPECT_EQ(buffer, expectedBuffer(screenshot, size / 4, buffer.size()));
    }
}

TEST(ScreenshotConversion, StopsAtTheFrameWhenTheFileHoldsMore) {
    const std::string screenshot = randomBytes(kFullHdPixels * 4 + 64, 7);
    const OpenScreenshot open(screenshot, testName());
    const size_t framePixels = 1280 * 720;
    std::vector<unsigned char> buffer(kFullHdPixels * 4, kUntouched);
    EXPECT_EQ(convertScreenshot(open.file(), framePixels, buffer.data()), framePixels);
    EXPECT_EQ(buffer, expectedBuffer(screenshot, framePixels, buffer.size()));
}

TEST(ScreenshotConversion, AFileThatCannotBeReadGivesNoPixels) {
    std::vector<unsigned char> buffer(16, kUntouched);
    EXPECT_EQ(convertScreenshot(-1, 4, buffer.data()), 0u);
    EXPECT_EQ(buffer, std::vector<unsigned char>(16, kUntouched));
}

// Each caller stands the helper by before every frame, as the frame path does, and now and then
// gives a frame up before converting it, as when the screenshot is missing.
TEST(ScreenshotConversion, CallersOnSeveralThreadsEachGetTheirOwnFrame) {
    constexpr int kCallers = 3;
    constexpr int kFramesEach = 12;
    std::vector<std::string> screenshots;
    for (int caller = 0; caller < kCallers; ++caller) {
        screenshots.push_back(randomBytes(kFullHdPixels * 4, 100 + caller));
    }
    const std::string name = testName();
    std::vector<int> correctFrames(kCallers, 0);
    std::vector<std::thread> callers;
    for (int caller = 0; caller < kCallers; ++caller) {
        callers.emplace_back([&, caller] {
            const OpenScreenshot open(screenshots[caller], name + std::to_string(caller));
            const std::vector<unsigned char> expected =
                expectedBuffer(screenshots[caller], kFullHdPixels, kFullHdPixels * 4);
            std::vector<unsigned char> buffer(kFullHdPixels * 4);
            for (int frame = 0; frame < kFramesEach; ++frame) {
                if (frame % 3 == caller) {
                    const ConversionStandby givenUp(kFullHdPixels);
                }
                const ConversionStandby standby(kFullHdPixels);
                buffer.assign(buffer.size(), kUntouched);
                if (convertScreenshot(open.file(), kFullHdPixels, buffer.data()) == kFullHdPixels &&
                    buffer == expected) {
                    ++correctFrames[caller];
                }
            }
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    EXPECT_EQ(correctFrames, std::vector<int>(kCallers, kFramesEach));
}

}  // namespace
}  // namespace norvane
