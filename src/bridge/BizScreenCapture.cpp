#include "bridge/BizScreenCapture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

#include "bridge/BizSettingAccess.h"
#include "common/ConsoleLog.h"
#include "common/Seams.h"

// Where the CPU offers wider vectors than the baseline, the pixel conversion gets a version for
// them, chosen when the library loads. Not under ThreadSanitizer: the choice runs while the
// library is being relocated, before the sanitizer's runtime is up.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_THREAD__)
#define NV_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define NV_VECTOR_CLONES
#endif

namespace norvane {

std::atomic<int32_t> videoWidth{1920};
std::atomic<int32_t> videoHeight{1080};

namespace {

constexpr const char* kCaptureKey = "marlo.sl2.action.system.capture.screen";
constexpr const char* kScreenshotFolder = "/tmp/screenshot/";
constexpr const char* kScreenshotFiles[] = {"test0.raw", "test1.raw"};
constexpr const char* kProbeFile = "test0.raw";
constexpr size_t kBytesPerPixel = 4;
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

// B,G,R,A to R,G,B,A in place: per pixel, a 32-bit word whose lowest and third bytes trade
// places. Word-wide masks and shifts over fixed-size blocks let the compiler vectorise each block
// without a run-time check.
inline void swapOne(unsigned char* pixel) {
    uint32_t word;
    std::memcpy(&word, pixel, sizeof word);
    word = (word & 0xFF00FF00u) | ((word >> 16) & 0xFFu) | ((word & 0xFFu) << 16);
    std::memcpy(pixel, &word, sizeof word);
}

NV_VECTOR_CLONES void swapRedAndBlue(unsigned char* pixels, size_t count) {
    constexpr size_t kBlock = 16;
    size_t pixel = 0;
    for (; pixel + kBlock <= count; pixel += kBlock) {
        for (size_t inBlock = 0; inBlock < kBlock; ++inBlock) {
            swapOne(pixels + (pixel + inBlock) * kBytesPerPixel);
        }
    }
    for (; pixel < count; ++pixel) {
        swapOne(pixels + pixel * kBytesPerPixel);
    }
}

// One long-lived helper thread for the frame path, so that no thread is made per frame. Leaked
// on purpose: the agent may ask for a frame while the process is exiting.
class FrameHelper {
public:
    static FrameHelper& instance() {
        static FrameHelper* const helper = new FrameHelper;
        return *helper;
    }

    std::future<size_t> run(std::function<size_t()> work) {
        std::packaged_task<size_t()> task(std::move(work));
        std::future<size_t> result = task.get_future();
        {
            std::lock_guard<std::mutex> lock(mutex_);
            tasks_.push_back(std::move(task));
        }
        wake_.notify_one();
        return result;
    }

private:
    FrameHelper() {
        std::thread([this] { serve(); }).detach();
    }

    [[noreturn]] void serve() {
        for (;;) {
            std::unique_lock<std::mutex> lock(mutex_);
            wake_.wait(lock, [this] { return !tasks_.empty(); });
            std::packaged_task<size_t()> task = std::move(tasks_.front());
            tasks_.pop_front();
            lock.unlock();
            task();
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::packaged_task<size_t()>> tasks_;
};

// Reads pixels [first, first + count) of the open screenshot into the same place of `buffer` and
// converts each block right after reading it, while it is still in the CPU cache. A file that
// the TV shortens meanwhile just ends early (a mapping would fault instead). Returns how many
// whole pixels were converted.
size_t convertPart(int file, size_t first, size_t count, unsigned char* buffer) {
    constexpr size_t kBlockBytes = 256 * 1024;
    const size_t begin = first * kBytesPerPixel;
    const size_t end = begin + count * kBytesPerPixel;
    size_t read = begin;       // bytes of the part in the buffer
    size_t converted = begin;  // bytes converted (whole pixels only)
    while (read < end) {
        const ssize_t got =
            pread(file, buffer + read, std::min(kBlockBytes, end - read), static_cast<off_t>(read));
        if (got <= 0) {
            break;
        }
        read += static_cast<size_t>(got);
        const size_t whole = read - (read - begin) % kBytesPerPixel;
        swapRedAndBlue(buffer + converted, (whole - converted) / kBytesPerPixel);
        converted = whole;
    }
    return (converted - begin) / kBytesPerPixel;
}

// Converts the complete pixels the open screenshot holds, at most `framePixels`, into `buffer`:
// the first half on the calling thread, the second on a helper, so a frame costs less time than
// one plain read of the file. Bytes past the last complete pixel are left as they were. Returns
// how many pixels from the start were converted.
size_t convertScreenshot(int file, size_t framePixels, unsigned char* buffer) {
    struct stat status {};
    if (fstat(file, &status) != 0 || status.st_size <= 0) {
        return 0;
    }
    const size_t pixels =
        std::min(framePixels, static_cast<size_t>(status.st_size) / kBytesPerPixel);
    const size_t firstHalf = pixels / 2;
    const size_t secondHalf = pixels - firstHalf;
    std::future<size_t> second = FrameHelper::instance().run(
        [=] { return convertPart(file, firstHalf, secondHalf, buffer); });
    const size_t first = convertPart(file, 0, firstHalf, buffer);
    const size_t rest = second.get();
    return first < firstHalf ? first : first + rest;
}

// Delivers the screenshot at `path` into `buffer`; see BizFillVideoFrameBuffer.
int32_t deliverScreenshot(const std::string& path, size_t framePixels, unsigned char* buffer) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        unlink(path.c_str());
        return 0;
    }
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
    if (!exists(readPath)) {
        consoleLog(kLogError, "The raw file is not exit.");
        // Past kMostMisses the count no longer matters; it stops there.
        if (missCounter < kMostMisses) {
            ++missCounter;
        }
        return -1;
    }
    missCounter = 0;
    return deliverScreenshot(readPath, framePixels, buffer);
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
