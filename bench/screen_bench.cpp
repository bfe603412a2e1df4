// What the simulated TV's screen costs: a 1080p screenshot of a channel with the menu and the
// volume bar up, drawn from the TV's state as a capture draws it (and, for comparison, the whole
// capture action, which also writes the raw file); a remote key; and a screenshot after a storm of
// 10,000 keys. Process CPU time, every thread counted. For medians of interleaved repetitions:
//   screen_bench --benchmark_repetitions=12 --benchmark_enable_random_interleaving=true
//                --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <string>

#include "Service.h"
#include "TemporaryTvRoot.h"
#include "marlo/tvapi/RootInterface.h"
#include "tvsim/TvSim.h"

namespace {

constexpr const char* kSaturation = "marlo.sl2.i32.video.colour.intensity";
constexpr const char* kChannelKey = "marlo.sl2.i32.tvservice.current.channel";

// The default TV on channel 1 with its menu open and the volume bar up. Simulated time stands
// almost still, so that nothing on screen runs out during a run.
class ScreenTv {
public:
    static ScreenTv& instance() {
        static ScreenTv tv;
        return tv;
    }

    tvsim::Service& service() { return tvsim::Service::instance(); }

    void press(const std::string& key) { service().software().pressKey(key); }

    size_t screenshot() {
        tvsim::Service& tv = service();
        const auto picture = tv.screen().capture(tv.software().view());
        benchmark::DoNotOptimize(picture->data());
        return picture->size();
    }

    // Back to the starting state, with the menu and the volume bar up.
    void prepare() {
        tvsim::Tv& tv = tvsim::Tv::instance();
        tv.loadDefaultProfile();
        tv.set("marlo.sl2.str.source.input.current", std::string("TV"));
        press("KEY_MENU");
        press("KEY_VOLUME_UP");
    }

private:
    ScreenTv() {
        tvsim::Tv::instance().setTimeScale(1e-9);
        prepare();
    }

    TemporaryTvRoot root_;
};

// What changes between two screenshots.
enum Change { kNothing, kPictureSetting, kChannelChange };

void BM_Screenshot1080p(benchmark::State& state) {
    ScreenTv& tv = ScreenTv::instance();
    tv.prepare();
    tvsim::Tv& control = tvsim::Tv::instance();
    int32_t step = 0;
    for (auto _ : state) {
        ++step;
        if (state.range(0) == kPictureSetting) {
            control.set(kSaturation, 50 + step % 2);
        } else if (state.range(0) == kChannelChange) {
            control.set(kChannelKey, 1 + step % 2);
        }
        benchmark::DoNotOptimize(tv.screenshot());
    }
    state.SetLabel(state.range(0) == kNothing          ? "same picture"
                   : state.range(0) == kPictureSetting ? "picture setting changed"
                                                       : "channel changed");
}
BENCHMARK(BM_Screenshot1080p)
    ->Arg(kNothing)
    ->Arg(kPictureSetting)
    ->Arg(kChannelChange)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

// The capture action as the plug-in runs it: draw, then write the raw file.
void BM_CaptureAction1080p(benchmark::State& state) {
    ScreenTv& tv = ScreenTv::instance();
    tv.prepare();
    marlo::lm::interfaces::tvapi::ParameterList arguments = {
        {marlo::lm::interfaces::tvapi::parameterTag(0), "/tmp/screenshot/"},
        {marlo::lm::interfaces::tvapi::parameterTag(1), "test0.raw"}};
    for (auto _ : state) {
        marlo::lm::interfaces::tvapi::ParameterList reply;
        if (tv.service().act("marlo.sl2.action.system.capture.screen", reply, arguments) != 0) {
            state.SkipWithError("the capture failed");
            break;
        }
        tv.service().journal().take();
    }
}
BENCHMARK(BM_CaptureAction1080p)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

// One key, as the plug-in's key action delivers it: up and down through the open menu.
void BM_RemoteKey(benchmark::State& state) {
    ScreenTv& tv = ScreenTv::instance();
    tv.prepare();
    bool down = false;
    for (auto _ : state) {
        down = !down;
        tv.press(down ? "KEY_CURSOR_DOWN" : "KEY_CURSOR_UP");
    }
}
BENCHMARK(BM_RemoteKey)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);

// A screenshot once 10,000 keys of every kind have been pressed (the storm itself is not timed).
void BM_ScreenshotAfterKeyStorm1080p(benchmark::State& state) {
    ScreenTv& tv = ScreenTv::instance();
    tv.prepare();
    const char* const keys[] = {"KEY_MENU",        "KEY_CURSOR_DOWN", "KEY_CURSOR_RIGHT",
                                "KEY_CURSOR_LEFT", "KEY_OK",          "KEY_BACK",
                                "KEY_VOLUME_UP",   "KEY_VOLUME_DOWN", "KEY_MUTE",
                                "KEY_CHANNEL_UP",  "KEY_INPUT",       "KEY_INFO",
                                "KEY_PICTURE",     "KEY_S_MODE",      "KEY_TV",
                                "KEY_CURSOR_UP",   "KEY_NETFLIX",     "KEY_5"};
    uint32_t seed = 7;
    for (int press = 0; press < 10000; ++press) {
        seed = seed * 1664525u + 1013904223u;
        tv.press(keys[(seed >> 8) % (sizeof(keys) / sizeof(keys[0]))]);
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(tv.screenshot());
    }
}
BENCHMARK(BM_ScreenshotAfterKeyStorm1080p)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
