#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "FilesTest.h"
#include "NorvaneExports.h"
#include "bridge/BizScreenCapture.h"

namespace norvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing_support::writeTvFile;
using Arguments = std::vector<std::string>;

constexpr const char* kFolder = "/tmp/screenshot/";
constexpr const char* kFirstFile = "/tmp/screenshot/test0.raw";
constexpr const char* kSecondFile = "/tmp/screenshot/test1.raw";
constexpr size_t kFullHdBytes = 1920 * 1080 * 4;
constexpr unsigned char kUntouched = 0xEE;

std::string randomBytes(size_t count) {
    std::mt19937 generator(20240611);
    std::string bytes(count, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(generator());
    }
    return bytes;
}

// What the agent should see of a screenshot in a buffer of `size` bytes: every complete pixel
// with its first and third byte exchanged, the rest of the buffer untouched.
std::vector<unsigned char> agentView(const std::string& screenshot, size_t size) {
    std::vector<unsigned char> rgba(size, kUntouched);
    for (size_t pixel = 0; pixel + 4 <= screenshot.size(); pixel += 4) {
        rgba[pixel] = static_cast<unsigned char>(screenshot[pixel + 2]);
        rgba[pixel + 1] = static_cast<unsigned char>(screenshot[pixel + 1]);
        rgba[pixel + 2] = static_cast<unsigned char>(screenshot[pixel]);
        rgba[pixel + 3] = static_cast<unsigned char>(screenshot[pixel + 3]);
    }
    return rgba;
}

class FrameFill : public FilesTest {
protected:
    std::vector<unsigned char> buffer = std::vector<unsigned char>(kFullHdBytes, kUntouched);

    void SetUp() override {
        FilesTest::SetUp();
        NvRegisterFillVideoFrameBuffer(BizFillVideoFrameBuffer);
    }
    int32_t fill(uint32_t size = kFullHdBytes) { return fillVideoBufferExt(buffer.data(), size); }
};

TEST_F(FrameFill, EachCallReadsWhatThePreviousOneAskedFor) {
    EXPECT_EQ(fill(kFullHdBytes - 1), -1);
    EXPECT_EQ(console.take(),
              "\t<-- size = 8294399, iVideoWidth = 1920, iVideoHeight = 1080 -->\n"
              "\t<** (size = 8294399) < WIDTH * HEIGHT * 4  **>\n");
    EXPECT_TRUE(takeActions().empty());

    EXPECT_EQ(fill(), -1) << "nothing was captured before the first call";
    EXPECT_THAT(takeActions(), ElementsAre(Arguments{kFolder, "test1.raw"}));
    EXPECT_THAT(console.take(), EndsWith("\t<** The raw file is not exit. **>\n"));

    const std::string captured = testing_support::readTvFile(kSecondFile);
    EXPECT_EQ(fill(), 0);
    EXPECT_THAT(takeActions(), ElementsAre(Arguments{kFolder, "test0.raw"}));
    EXPECT_THAT(console.take(), EndsWith("\t<-- fillVideoFrameBuffer, pixels num: 2073600 -->\n"));
    EXPECT_EQ(buffer, agentView(captured, kFullHdBytes));
    EXPECT_FALSE(fs::exists(hostPath(kSecondFile))) << "a delivered screenshot is deleted";

    EXPECT_EQ(fill(), 0);
    EXPECT_THAT(takeActions(), ElementsAre(Arguments{kFolder, "test1.raw"}));
    EXPECT_FALSE(fs::exists(hostPath(kFirstFile)));
}

TEST_F(FrameFill, ALargerBufferGetsOneFrameAndAShortFileItsCompletePixels) {
    tv().setCaptureEnabled(false);
    const std::string frame = randomBytes(kFullHdBytes);
    writeTvFile(kFirstFile, frame);
    buffer.resize(kFullHdBytes + 16, kUntouched);
    EXPECT_EQ(fill(kFullHdBytes + 16), 0);
    EXPECT_EQ(buffer, agentView(frame, buffer.size()));

    const std::string tenPixelsAndMore = randomBytes(10 * 4 + 3);
    writeTvFile(kSecondFile, tenPixelsAndMore);
    buffer.assign(kFullHdBytes, kUntouched);
    EXPECT_EQ(fill(), -1);
    EXPECT_THAT(console.take(), EndsWith("\t<** fillVideoFrameBuffer error. total num = 10 **>\n"));
    EXPECT_EQ(buffer, agentView(tenPixelsAndMore, kFullHdBytes));
    EXPECT_TRUE(fs::exists(hostPath(kSecondFile))) << "a short screenshot is kept";
}

// Past eight misses the miss count stops growing; only an overflow after 2^31 misses could show
// whether it does.
TEST_F(FrameFill, EightMissesInARowStopTheCapturesUntilAFileTurnsUp) {
    tv().setCaptureEnabled(false);
    for (int call = 0; call < 10; ++call) {
        EXPECT_EQ(fill(), -1);
    }
    EXPECT_EQ(takeActions().size(), 8u);
    writeTvFile(kFirstFile, randomBytes(kFullHdBytes));
    EXPECT_EQ(fill(), 0);
    EXPECT_TRUE(takeActions().empty());
    EXPECT_EQ(fill(), -1);
    EXPECT_EQ(takeActions().size(), 1u) << "a found screenshot starts the captures again";
}

using ScreenCapture = FilesTest;

TEST_F(ScreenCapture, ACaptureNeedsAFolderAndAFileName) {
    for (const Arguments& parts : {Arguments{}, Arguments{kFolder}}) {
        EXPECT_EQ(BizActionCaptureScreen(parts), -1);
        EXPECT_EQ(console.take(), "\t<** In BizActionCaptureScreen, parameter error. **>\n");
    }
    EXPECT_TRUE(takeActions().empty());
    EXPECT_EQ(BizActionCaptureScreen({kFolder, "test0.raw", "ignored"}), 0);
    EXPECT_THAT(takeActions(), ElementsAre(Arguments{kFolder, "test0.raw"}));
}

// The probe makes the screenshot folder inside the TV's /tmp.
class ScreenSizeProbe : public FilesTest {
protected:
    void probeScreenOf(int32_t width, int32_t height) {
        tv().setScreenSize(width, height);
        EXPECT_EQ(BizInitScreenSize(), 0);
        EXPECT_FALSE(fs::exists(hostPath(kFirstFile)));
    }
};

TEST_F(ScreenSizeProbe, KnownScreenshotSizesSetTheFrameSize) {
    probeScreenOf(1280, 720);
    EXPECT_EQ(getVideoWidthExt(), 1280);
    EXPECT_EQ(getVideoHeightExt(), 720);
    EXPECT_THAT(takeActions(), ElementsAre(Arguments{kFolder, "test0.raw"}));

    probeScreenOf(100, 75);
    EXPECT_THAT(console.take(), EndsWith("\t<-- lFileSize = 30000 -->\n"
                                         "\t<** Get screen pixel number error! **>\n"));
    EXPECT_EQ(getVideoWidthExt(), 1280);
    EXPECT_EQ(getVideoHeightExt(), 720);

    probeScreenOf(1920, 1080);
    EXPECT_EQ(getVideoWidthExt(), 1920);
    EXPECT_EQ(getVideoHeightExt(), 1080);
}

TEST_F(ScreenSizeProbe, MakesTheFolderForTheCaptureGroupOnce) {
    probeScreenOf(1920, 1080);
    struct stat folder {};
    ASSERT_EQ(stat(hostPath(kFolder).c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 07777, 0770u);
    if (geteuid() == 0) {
        EXPECT_EQ(folder.st_gid, 403u);
    }
    chmod(hostPath(kFolder).c_str(), 0705);
    probeScreenOf(1920, 1080);
    ASSERT_EQ(stat(hostPath(kFolder).c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 07777, 0705u) << "an existing folder is left alone";
}

TEST_F(ScreenSizeProbe, NoFolderIsAFailureAndNoScreenshotIsNot) {
    fs::remove(hostPath("/tmp"));
    EXPECT_EQ(BizInitScreenSize(), -1);
    EXPECT_EQ(console.take(), "\t<** Creat raw file path fail! **>\n");

    fs::create_directories(hostPath("/tmp"));
    tv().setCaptureEnabled(false);
    EXPECT_EQ(BizInitScreenSize(), 0);
    EXPECT_THAT(console.take(), EndsWith("\t<** The screen shot file is not exit, "
                                         "strGetFileFullPath is " +
                                         hostPath(kFirstFile) + " **>\n"));
}

}  // namespace
}  // namespace norvane
