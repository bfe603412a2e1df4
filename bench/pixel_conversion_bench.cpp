// The pixel conversion alone, one case per implementation this CPU can run, on a cached block of
// the size the frame path converts at a time.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bridge/ScreenshotConversion.h"

namespace {

constexpr size_t kPixelBytes = 256 * 1024;

void BM_ConvertPixels(benchmark::State& state, norvane::PixelConversion convert) {
    std::vector<unsigned char> pixels(kPixelBytes);
    for (size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = static_cast<unsigned char>(i * 31 + i / 7680);
    }
    for (auto _ : state) {
        convert(pixels.data(), pixels.size() / norvane::kBytesPerPixel);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kPixelBytes));
}

}  // namespace

int main(int argc, char** argv) {
    for (const norvane::PixelConverter& converter : norvane::pixelConverters()) {
        if (converter.runsHere()) {
            benchmark::RegisterBenchmark(
                (std::string("BM_ConvertPixels/") + converter.name).c_str(), BM_ConvertPixels,
                converter.convert);
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
