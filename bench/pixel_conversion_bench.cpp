// The pixel conversion alone, one case per implementation this CPU can run, on a cached block of
// the size the frame path converts at a time.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bridge/ScreenshotConversion.h"

namespace {

constexpr size_t kPixelBytes = 256 * 1024;
// The frame copy moves a block down this far when the agent's buffer starts 16 bytes into a
// cache line, as a plain allocation of a frame does with the 64-bit C library.
constexpr size_t kMovedDownBytes = 48;

// `distance`: how far above its result a block starts; 0 converts in place.
void BM_ConvertPixels(benchmark::State& state, norvane::PixelConversion convert, size_t distance) {
    std::vector<unsigned char> pixels(kPixelBytes + distance);
    for (size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = static_cast<unsigned char>(i * 31 + i / 7680);
    }
    for (auto _ : state) {
        convert(pixels.data(), pixels.data() + distance, kPixelBytes / norvane::kBytesPerPixel);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kPixelBytes));
}

}  // namespace

int main(int argc, char** argv) {
    for (const norvane::PixelConverter& converter : norvane::pixelConverters()) {
        if (converter.runsHere()) {
            const std::string name = std::string("BM_ConvertPixels/") + converter.name;
            benchmark::RegisterBenchmark(name.c_str(), BM_ConvertPixels, converter.convert, 0);
            benchmark::RegisterBenchmark((name + "/movedDown").c_str(), BM_ConvertPixels,
                                         converter.convert, kMovedDownBytes);
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
