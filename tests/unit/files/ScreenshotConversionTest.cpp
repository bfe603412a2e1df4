#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "bridge/ScreenshotConversion.h"

namespace norvane {

// Test names and failures show an implementation by its name.
void PrintTo(const PixelConverter& converter, std::ostream* out) {
    *out << converter.name;
}

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

// The copy's block size (256 KiB) changes its speed, never its result; bench/ measures it.
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

// Each block lands where the kernel copies fastest, up to a cache line above its place in the
// agent's buffer, and is moved down as it is converted: the buffer's start within a line, pixel
// aligned or not, never changes the result or what lies around it.
TEST(ScreenshotConversion, TheSameFrameWhereverTheBufferStartsInACacheLine) {
    const size_t sizes[] = {5, 262144 + 60, 3 * 262144 + 43};
    constexpr size_t kGuard = 64;
    for (const size_t size : sizes) {
        const std::string screenshot = randomBytes(size, static_cast<unsigned>(size));
        const OpenScreenshot open(screenshot, testName());
        const std::vector<unsigned char> frame = expectedBuffer(screenshot, size / 4, size);
        for (size_t offset = 0; offset < 64; ++offset) {
            SCOPED_TRACE(testing::Message() << size << " bytes to offset " << offset);
            std::vector<unsigned char> buffer(size + offset + 2 * kGuard, kUntouched);
            unsigned char* const start = buffer.data() + kGuard + offset;
            std::vector<unsigned char> expected = buffer;
            std::copy(frame.begin(), frame.end(), expected.begin() + kGuard + offset);
            EXPECT_EQ(convertScreenshot(open.file(), size / 4, start), size / 4);
            ASSERT_EQ(buffer, expected);
        }
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

// Every implementation the target has, called directly: the frame path uses only the one chosen
// for this CPU, but a TV with another CPU takes another.
class PixelConversionTest : public testing::TestWithParam<PixelConverter> {};

TEST_P(PixelConversionTest, AnyLengthAtAnyAlignmentInPlaceOrMovedDownAndNothingAroundIt) {
    const PixelConverter& converter = GetParam();
    if (!converter.runsHere()) {
        GTEST_SKIP() << converter.name << " needs instructions this CPU lacks";
    }
    // Zero, one, around the vector widths, and a long ragged run.
    const size_t counts[] = {0, 1, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 1031};
    // In place, and moved down by less than a pixel, a pixel, a vector and a cache line, so that
    // source and result overlap in every way the frame copy makes them.
    const size_t distances[] = {0, 1, 4, 6, 32, 48, 63};
    constexpr size_t kGuard = 64;
    // Every start within a 32-byte vector, on a pixel boundary or off it, so that each length of
    // the lead-in before the first aligned vector is met.
    constexpr size_t kOffsets = 36;
    for (const size_t count : counts) {
        for (const size_t distance : distances) {
            for (size_t offset = 0; offset < kOffsets; ++offset) {
                SCOPED_TRACE(testing::Message() << count << " pixels to offset " << offset
                                                << " from " << distance << " bytes above");
                const size_t to = kGuard + offset;
                const std::string bytes =
                    randomBytes(count * 4 + distance + 2 * kGuard, count * 4 + offset + distance);
                std::vector<unsigned char> buffer(bytes.begin(), bytes.end());
                converter.convert(buffer.data() + to, buffer.data() + to + distance, count);
                std::vector<unsigned char> expected(bytes.begin(), bytes.end());
                const std::vector<unsigned char> converted =
                    expectedBuffer(bytes.substr(to + distance), count, count * 4);
                std::copy(converted.begin(), converted.end(), expected.begin() + to);
                ASSERT_EQ(buffer, expected);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryImplementation, PixelConversionTest,
                         testing::ValuesIn(pixelConverters().begin(), pixelConverters().end()),
                         [](const testing::TestParamInfo<PixelConverter>& info) {
                             return std::string(info.param.name);
                         });

// The list runs from the portable implementation to the fastest, so the frame path takes the
// last one this CPU can run.
TEST(PixelConversion, TheFramePathTakesTheFastestImplementationThisCpuRuns) {
    const PixelConverterList converters = pixelConverters();
    ASSERT_GT(converters.count, 0u);
    EXPECT_STREQ(converters.first->name, "portable");
    PixelConversion fastest = nullptr;
    for (const PixelConverter& converter : converters) {
        if (converter.runsHere()) {
            fastest = converter.convert;
        }
    }
    EXPECT_EQ(chosenPixelConversion(), fastest);
}

#if defined(__arm__) || defined(__x86_64__)
// The targets that ship or build have a vector implementation next to the portable one, and the
// machines that test them (the emulator gives NEON) run it, so both paths are tested.
TEST(PixelConversion, TheTargetHasAVectorImplementationThatRunsHere) {
    const PixelConverterList converters = pixelConverters();
    ASSERT_GE(converters.count, 2u);
    EXPECT_TRUE(converters.first[1].runsHere()) << converters.first[1].name;
}
#endif

}  // namespace
}  // namespace norvane
