// Frame delivery cost: the plug-in's frame fill of a warm 1080p screenshot, next to a plain read
// of the same file and to a reader that takes the file one pixel per stream read.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "NorvaneExports.h"
#include "QuietStdout.h"
#include "TemporaryTvRoot.h"
#include "bridge/ZelBizClient.h"
#include "tvsim/TvSim.h"

namespace {

namespace fs = std::filesystem;

constexpr size_t kFrameBytes = 1920 * 1080 * 4;
constexpr const char* kScreenshots[] = {"/tmp/screenshot/test0.raw", "/tmp/screenshot/test1.raw"};

// A simulated TV holding one 1080p screenshot (kept as a master copy) that stays in the page
// cache. The TV writes no screenshots itself, so that only the plug-in's side is measured.
class ScreenshotTv {
public:
    static ScreenshotTv& instance() {
        static ScreenshotTv tv;
        return tv;
    }

    const std::string& master() const { return master_; }

    // Gives each screenshot name the master's data again: a new link, so nothing is copied and
    // the data stays warm. Also drops the TV's record of the capture requests.
    void restoreScreenshots() const {
        tvsim::Tv& tv = tvsim::Tv::instance();
        for (const char* screenshot : kScreenshots) {
            link(master_.c_str(), tv.resolvePath(screenshot).c_str());
        }
        tv.takeJournal();
    }

private:
    ScreenshotTv() {
        tvsim::Tv& tv = tvsim::Tv::instance();
        tv.setTimeScale(1000);
        tv.setCaptureEnabled(false);
        master_ = tv.resolvePath("/tmp/screenshot/master.raw");
        fs::create_directories(fs::path(master_).parent_path());
        std::string pixels(kFrameBytes, '\0');
        for (size_t i = 0; i < pixels.size(); ++i) {
            pixels[i] = static_cast<char>(i * 31 + i / 7680);
        }
        std::ofstream(master_, std::ios::binary) << pixels;
        norvane::ZelBizClient::getInstance();
        norvane::RegisterZelBizInterface();
    }
    TemporaryTvRoot root_;
    std::string master_;
};

// A frame buffer that starts `offset` bytes into a page. A copy of a cached file into memory a few
// bytes past its own place in a page is several times slower on some CPUs; 8 is where a 32-bit C
// library puts a large allocation. The first cases take a plain allocation of a frame, which with
// this C library starts 16 bytes into a page.
class BufferInPage {
public:
    explicit BufferInPage(size_t offset)
        : data_(storage_.data() +
                (kPageBytes - reinterpret_cast<uintptr_t>(storage_.data()) % kPageBytes) %
                    kPageBytes +
                offset) {}
    unsigned char* data() { return data_; }

private:
    static constexpr size_t kPageBytes = 4096;
    std::vector<unsigned char> storage_ = std::vector<unsigned char>(kFrameBytes + 2 * kPageBytes);
    unsigned char* data_;
};

void fillFrames(benchmark::State& state, unsigned char* buffer) {
    const ScreenshotTv& tv = ScreenshotTv::instance();
    const QuietStdout quiet;
    for (auto _ : state) {
        state.PauseTiming();
        tv.restoreScreenshots();
        state.ResumeTiming();
        if (fillVideoBufferExt(buffer, kFrameBytes) != 0) {
            state.SkipWithError("no frame delivered");
            break;
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFrameBytes));
}

void readFrames(benchmark::State& state, unsigned char* buffer) {
    const ScreenshotTv& tv = ScreenshotTv::instance();
    for (auto _ : state) {
        const int file = open(tv.master().c_str(), O_RDONLY | O_CLOEXEC);
        size_t done = 0;
        ssize_t count = 0;
        while (done < kFrameBytes && (count = read(file, buffer + done, kFrameBytes - done)) > 0) {
            done += static_cast<size_t>(count);
        }
        close(file);
        if (done != kFrameBytes) {
            state.SkipWithError("short read");
            break;
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFrameBytes));
}

void BM_FillFrame1080p(benchmark::State& state) {
    std::vector<unsigned char> buffer(kFrameBytes);
    fillFrames(state, buffer.data());
}
BENCHMARK(BM_FillFrame1080p);
// What a frame costs the whole process, on every thread.
BENCHMARK(BM_FillFrame1080p)->MeasureProcessCPUTime();

void BM_ReadFile1080p(benchmark::State& state) {
    std::vector<unsigned char> buffer(kFrameBytes);
    readFrames(state, buffer.data());
}
BENCHMARK(BM_ReadFile1080p);
BENCHMARK(BM_ReadFile1080p)->MeasureProcessCPUTime();

// Both again into a buffer at a chosen place in a page.
void BM_FillFrame1080pInPage(benchmark::State& state) {
    BufferInPage buffer(static_cast<size_t>(state.range(0)));
    fillFrames(state, buffer.data());
}
BENCHMARK(BM_FillFrame1080pInPage)->ArgName("offset")->Arg(0)->Arg(8)->MeasureProcessCPUTime();

void BM_ReadFile1080pInPage(benchmark::State& state) {
    BufferInPage buffer(static_cast<size_t>(state.range(0)));
    readFrames(state, buffer.data());
}
BENCHMARK(BM_ReadFile1080pInPage)->ArgName("offset")->Arg(0)->Arg(8)->MeasureProcessCPUTime();

void BM_FillFramePerPixelRead1080p(benchmark::State& state) {
    const ScreenshotTv& tv = ScreenshotTv::instance();
    std::vector<unsigned char> buffer(kFrameBytes);
    for (auto _ : state) {
        std::FILE* file = std::fopen(tv.master().c_str(), "rb");
        unsigned char pixel[4];
        size_t offset = 0;
        for (; offset < buffer.size() && std::fread(pixel, sizeof pixel, 1, file) == 1;
             offset += sizeof pixel) {
            buffer[offset] = pixel[2];
            buffer[offset + 1] = pixel[1];
            buffer[offset + 2] = pixel[0];
            buffer[offset + 3] = pixel[3];
        }
        std::fclose(file);
        if (offset != buffer.size()) {
            state.SkipWithError("short read");
            break;
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFrameBytes));
}
BENCHMARK(BM_FillFramePerPixelRead1080p);

}  // namespace

BENCHMARK_MAIN();
