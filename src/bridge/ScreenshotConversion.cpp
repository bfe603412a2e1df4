#include "bridge/ScreenshotConversion.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

// Where the CPU offers a byte shuffle the baseline lacks, the pixel conversion gets a version for
// it, chosen when the library loads. Not under ThreadSanitizer: the choice runs while the library
// is being relocated, before the sanitizer's runtime is up.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_THREAD__)
#define NV_VECTOR_CLONES \
    __attribute__((target_clones("arch=x86-64-v4", "avx2", "ssse3", "default")))
#else
#define NV_VECTOR_CLONES
#endif

namespace norvane {
namespace {

// Small enough that a block is still in the CPU cache when it is converted right after being
// read, large enough that a frame takes few reads.
constexpr size_t kBlockBytes = 256 * 1024;
// A frame's last part goes in smaller blocks; see FrameJob::takeBlock.
constexpr size_t kEndBytes = 512 * 1024;
constexpr size_t kEndBlockBytes = 64 * 1024;
static_assert(kBlockBytes % kBytesPerPixel == 0 && kEndBlockBytes % kBytesPerPixel == 0,
              "blocks hold whole pixels");

// Sixteen pixels, one byte shuffle: each keeps G and A and trades B and R.
typedef unsigned char PixelGroup __attribute__((vector_size(64)));
constexpr size_t kGroupPixels = sizeof(PixelGroup) / kBytesPerPixel;

NV_VECTOR_CLONES void swapRedAndBlue(unsigned char* pixels, size_t count) {
    size_t pixel = 0;
    for (; pixel + kGroupPixels <= count; pixel += kGroupPixels) {
        PixelGroup group;
        std::memcpy(&group, pixels + pixel * kBytesPerPixel, sizeof group);
        group = __builtin_shufflevector(
            group, group, 2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15, 18, 17, 16, 19, 22,
            21, 20, 23, 26, 25, 24, 27, 30, 29, 28, 31, 34, 33, 32, 35, 38, 37, 36, 39, 42, 41, 40,
            43, 46, 45, 44, 47, 50, 49, 48, 51, 54, 53, 52, 55, 58, 57, 56, 59, 62, 61, 60, 63);
        std::memcpy(pixels + pixel * kBytesPerPixel, &group, sizeof group);
    }
    for (; pixel < count; ++pixel) {
        std::swap(pixels[pixel * kBytesPerPixel], pixels[pixel * kBytesPerPixel + 2]);
    }
}

// One frame's copy, handed out a block at a time to whichever thread asks next, so that neither
// thread waits for the other when one starts late.
class FrameJob {
public:
    FrameJob(int file, size_t bytes, unsigned char* buffer)
        : file_(file), bytes_(bytes), buffer_(buffer), firstGap_(bytes) {}

    void work() {
        size_t begin = 0;
        size_t end = 0;
        while (takeBlock(begin, end)) {
            convertBlock(begin, end);
        }
    }

    // Where the converted run from the start ends.
    size_t convertedBytes() const { return firstGap_.load(); }

private:
    // The frame's end is handed out in smaller blocks, so that the two threads run out of work at
    // nearly the same moment and neither waits long for the other.
    bool takeBlock(size_t& begin, size_t& end) {
        size_t next = nextByte_.load();
        do {
            if (next >= bytes_) {
                return false;
            }
            const size_t size = bytes_ - next > kEndBytes ? kBlockBytes : kEndBlockBytes;
            end = std::min(next + size, bytes_);
        } while (!nextByte_.compare_exchange_weak(next, end));
        begin = next;
        return true;
    }

    // Reads the block into its place in the buffer and converts it while it is still cached. A
    // file the TV shortens meanwhile just ends early (a mapping of it would fault instead).
    void convertBlock(size_t begin, size_t end) {
        size_t read = begin;
        for (ssize_t got = 1; read < end && got > 0;) {
            got = pread(file_, buffer_ + read, end - read, static_cast<off_t>(read));
            read += got > 0 ? static_cast<size_t>(got) : 0;
        }
        const size_t whole = read - (read - begin) % kBytesPerPixel;
        swapRedAndBlue(buffer_ + begin, (whole - begin) / kBytesPerPixel);
        if (whole < end) {
            noteGapAt(whole);
        }
    }

    void noteGapAt(size_t at) {
        size_t known = firstGap_.load();
        while (at < known && !firstGap_.compare_exchange_weak(known, at)) {
        }
    }

    const int file_;
    const size_t bytes_;
    unsigned char* const buffer_;
    std::atomic<size_t> nextByte_{0};
    std::atomic<size_t> firstGap_;
};

// One long-lived helper thread for the frame path, so that no thread is made per frame. Leaked
// on purpose: the agent may ask for a frame while the process is exiting.
class FrameHelper {
    using Clock = std::chrono::steady_clock;
    // Several times what one block takes to read and convert.
    static constexpr std::chrono::microseconds kLongestSpin{200};
    // Longer than the work a caller does between asking for a frame and offering it, short enough
    // that a caller held up elsewhere does not keep a core busy for long.
    static constexpr std::chrono::microseconds kLongestStandby{100};
    // A frame asked for within this time of the previous one's end counts as back to back. After
    // such a frame the helper watches this long for the next one before it sleeps: waking a
    // sleeping thread costs the caller microseconds and the helper tens more before it runs.
    // Frames further apart never keep it watching.
    static constexpr std::chrono::microseconds kBackToBack{100};

public:
    static FrameHelper& instance() {
        static FrameHelper* const helper = new FrameHelper;
        return *helper;
    }

    // A frame is on its way: the helper wakes now and watches for the offer instead of sleeping,
    // so that its wake-up is over by the time the copy starts.
    void standBy() {
        backToBack_.store(Clock::now() - lastStandDown_.load() < kBackToBack);
        {
            std::lock_guard<std::mutex> lock(mutex_);
            standbyCalls_.fetch_add(1);
            standbys_.fetch_add(1);
        }
        wake_.notify_one();
    }

    void standDown() {
        lastStandDown_.store(Clock::now());
        standbys_.fetch_sub(1);
    }

    // Lets the helper take blocks of `job`. When it is still on another frame the offer is not
    // made and the caller does every block itself.
    void offer(FrameJob& job) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (offered_.load() != nullptr || serving_.load() != nullptr) {
                return;
            }
            offered_.store(&job);
        }
        wake_.notify_one();
    }

    // Returns once the helper can no longer touch `job`: an offer it has not taken yet is
    // withdrawn, a job it is on is waited for. The caller only gets here when no block is left,
    // so the helper is at most one block from done: a short spin usually sees it finish without
    // the cost of sleeping and being woken.
    void finish(FrameJob& job) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (offered_.load() == &job) {
                offered_.store(nullptr);
            }
        }
        spinWhile([&] { return serving_.load() == &job; }, kLongestSpin);
        std::unique_lock<std::mutex> lock(mutex_);
        done_.wait(lock, [&] { return serving_.load() != &job; });
    }

private:
    FrameHelper() {
        std::thread([this] { serve(); }).detach();
    }

    template <typename Condition>
    static void spinWhile(Condition condition, std::chrono::microseconds longest) {
        const auto giveUp = Clock::now() + longest;
        while (condition() && Clock::now() < giveUp) {
            std::this_thread::yield();
        }
    }

    [[noreturn]] void serve() {
        std::unique_lock<std::mutex> lock(mutex_);
        for (;;) {
            wake_.wait(lock, [this] { return offered_.load() != nullptr || newStandby(); });
            answeredStandbyCalls_ = standbyCalls_.load();
            if (offered_.load() == nullptr) {
                awaitOffer(lock);
            }
            FrameJob* const job = offered_.load();
            if (job == nullptr) {
                continue;
            }
            serving_.store(job);
            offered_.store(nullptr);
            lock.unlock();
            job->work();
            lock.lock();
            serving_.store(nullptr);
            done_.notify_all();
            if (backToBack_.load()) {
                watchForNextFrame(lock);
            }
        }
    }

    bool newStandby() const { return standbyCalls_.load() != answeredStandbyCalls_; }

    void awaitOffer(std::unique_lock<std::mutex>& lock) {
        lock.unlock();
        spinWhile([this] { return offered_.load() == nullptr && standbys_.load() > 0; },
                  kLongestStandby);
        lock.lock();
    }

    void watchForNextFrame(std::unique_lock<std::mutex>& lock) {
        lock.unlock();
        spinWhile([this] { return offered_.load() == nullptr && !newStandby(); }, kBackToBack);
        lock.lock();
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable done_;
    // The helper's own record of the standbys it has answered.
    unsigned answeredStandbyCalls_ = 0;
    // Changed under the mutex where a sleeping helper must not miss the change; read without it
    // while spinning.
    std::atomic<FrameJob*> offered_{nullptr};
    std::atomic<FrameJob*> serving_{nullptr};
    std::atomic<unsigned> standbyCalls_{0};
    std::atomic<int> standbys_{0};
    // When the last frame request ended, and whether the current one came soon after.
    std::atomic<Clock::time_point> lastStandDown_{Clock::time_point{}};
    std::atomic<bool> backToBack_{false};
};

// A single block is done sooner than the helper could be woken to share it.
bool worthSharing(size_t bytes) {
    return bytes > kBlockBytes;
}

}  // namespace

size_t convertScreenshot(int file, size_t framePixels, unsigned char* buffer) {
    struct stat status {};
    if (fstat(file, &status) != 0 || status.st_size <= 0) {
        return 0;
    }
    const size_t pixels =
        std::min(framePixels, static_cast<size_t>(status.st_size) / kBytesPerPixel);
    FrameJob job(file, pixels * kBytesPerPixel, buffer);
    const bool shared = worthSharing(pixels * kBytesPerPixel);
    if (shared) {
        FrameHelper::instance().offer(job);
    }
    job.work();
    if (shared) {
        FrameHelper::instance().finish(job);
    }
    return job.convertedBytes() / kBytesPerPixel;
}

ConversionStandby::ConversionStandby(size_t framePixels)
    : standing_(worthSharing(framePixels * kBytesPerPixel)) {
    if (standing_) {
        FrameHelper::instance().standBy();
    }
}

ConversionStandby::~ConversionStandby() {
    if (standing_) {
        FrameHelper::instance().standDown();
    }
}

}  // namespace norvane
