#include "bridge/BizScreenCapture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>

#include "bridge/BizSettingAccess.h"
#include "bridge/ScreenshotConversion.h"
#include "common/ConsoleLog.h"
#include "common/Seams.h"

namespace norvane {

std::atomic<int32_t> videoWidth{1920};
std::atomic<int32_t> videoHeight{1080};

namespace {

constexpr const char* kCaptureKey = "marlo.sl2.action.system.capture.screen";
constexpr const char* kScreenshotFolder = "/tmp/screenshot/";
constexpr const char* kScreenshotFiles[] = {"test0.raw", "test1.raw"};
constexpr const char* kProbeFile = "test0.raw";
constexpr int32_t kMostMisses = 8;
// The TV's screenshot group: the capture service writes into the folder through it.
constexpr gid_t kScreenshotGroup = 403;

struct ScreenSize {
    long fileBytes;
    int32_t width;
    int32_t height;
};
constexpr ScreenSize kScreenSizes[] = {{3686400, 1280, 720}, {8294400, 1920, 1080}};

// Only the frame path touches these; the agent asks for frames from one thread at a time.
uint32_t frameCounter = 0;
int32_t missCounter = 0;

std::string screenshotPath(const char* fileName) {
    return platformPath(std::string(kScreenshotFolder) + fileName);
}

bool exists(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

// Delivers the open screenshot `file`, found at `path`, into `buffer`; see
// BizFillVideoFrameBuffer.
int32_t deliverScreenshot(int file, const std::string& path, size_t framePixels,
                          unsigned char* buffer) {
    const size_t converted = convertScreenshot(file, framePixels, buffer);
    close(file);
    if (converted < framePixels) {
        // Kept: the next capture into this file replaces it.
        consoleLog(kLogError, "fillVideoFrameBuffer error. total num = %d",
                   static_cast<int>(converted));
        return -1;
    }
    consoleLog(kLogInfo, "fillVideoFrameBuffer, pixels num: %d", static_cast<int>(converted));
    unlink(path.c_str());
    return 0;
}

bool createScreenshotFolder(const std::string& folder) {
    if (mkdir(folder.c_str(), 0755) != 0) {
        return false;
    }
    chmod(folder.c_str(), 0770);
    if (chown(folder.c_str(), static_cast<uid_t>(-1), kScreenshotGroup) != 0) {
        // Not permitted here: the folder stays its owner's, which is all the plug-in needs.
    }
    return true;
}

long fileSizeOf(std::FILE* file) {
    std::fseek(file, 0, SEEK_END);
    return std::ftell(file);
}

void takeScreenSize(long fileBytes) {
    for (const ScreenSize& size : kScreenSizes) {
        if (size.fileBytes == fileBytes) {
            videoWidth.store(size.width, std::memory_order_relaxed);
            videoHeight.store(size.height, std::memory_order_relaxed);
            return;
        }
    }
    consoleLog(kLogError, "Get screen pixel number error!");
}

}  // namespace

int32_t BizActionCaptureScreen(const std::vector<std::string>& parts) {
    if (parts.size() < 2) {
        consoleLog(kLogError, "In BizActionCaptureScreen, parameter error.");
        return -1;
    }
    runAction(kCaptureKey, {parts[0], parts[1]});
    return 0;
}

int32_t BizFillVideoFrameBuffer(unsigned char* buffer, uint32_t size) {
    if (buffer == nullptr) {
        consoleLog(kLogError, "Error Invalid Parameter.");
        return -1;
    }
    const int32_t width = videoWidth.load(std::memory_order_relaxed);
    const int32_t height = videoHeight.load(std::memory_order_relaxed);
    consoleLog(kLogInfo, "size = %u, iVideoWidth = %d, iVideoHeight = %d", size, width, height);
    const size_t framePixels = static_cast<size_t>(width) * static_cast<size_t>(height);
    if (size < framePixels * kBytesPerPixel) {
        consoleLog(kLogError, "(size = %u) < WIDTH * HEIGHT * 4 ", size);
        return -1;
    }
    const uint32_t frame = frameCounter++;
    const char* readFile = kScreenshotFiles[frame % 2];
    const char* captureFile = kScreenshotFiles[(frame + 1) % 2];
    if (missCounter < kMostMisses) {
        BizActionCaptureScreen({kScreenshotFolder, captureFile});
    }
    const std::string readPath = screenshotPath(readFile);
    // Opened before it is known to exist: on a frame's way the existence check costs a lookup of
    // its own. A failed open is told apart from a missing file afterwards.
    const int file = open(readPath.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0 && !exists(readPath)) {
        consoleLog(kLogError, "The raw file is not exit.");
        // Past kMostMisses the count no longer matters; it stops there.
        if (missCounter < kMostMisses) {
            ++missCounter;
        }
        return -1;
    }
    missCounter = 0;
    if (file < 0) {
        unlink(readPath.c_str());
        return 0;
    }
    return deliverScreenshot(file, readPath, framePixels, buffer);
}

int32_t BizInitScreenSize() {
    const std::string folder = platformPath(kScreenshotFolder);
    if (!exists(folder) && !createScreenshotFolder(folder)) {
        consoleLog(kLogError, "Creat raw file path fail!");
        return -1;
    }
    BizActionCaptureScreen({kScreenshotFolder, kProbeFile});
    clock::sleepSeconds(1);
    const std::string path = screenshotPath(kProbeFile);
    if (!exists(path)) {
        consoleLog(kLogError, "The screen shot file is not exit, strGetFileFullPath is %s",
                   path.c_str());
        return 0;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        consoleLog(kLogError, "Open screenshot file fail!");
        return -1;
    }
    const long fileBytes = fileSizeOf(file);
    consoleLog(kLogInfo, "lFileSize = %d", static_cast<int>(fileBytes));
    takeScreenSize(fileBytes);
    std::fclose(file);
    if (std::remove(path.c_str()) != 0) {
        consoleLog(kLogError, "Remove .raw file fail!");
    }
    return 0;
}

}  // namespace norvane
