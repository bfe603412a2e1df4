// The web console's frame route, as agentsim console runs it: the built plug-in loaded as the
// agent loads it, frames asked for through fillVideoBufferExt on the pump's one thread, tiled, and
// sent over HTTP on loopback to a page that asks at a chosen rate. Reports the frames per second
// and the CPU the route used, on every thread: "cores" for the whole process, "server_cores"
// without the page's own thread (this benchmark's thread, which reads the frames).
#include <benchmark/benchmark.h>
#include <time.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <chrono>
#include <cstring>
#include <thread>

#include "AccessGuard.h"
#include "ConsoleApi.h"
#include "FramePump.h"
#include "HttpServer.h"
#include "Plugin.h"
#include "QuietStdout.h"
#include "SimulatedTv.h"

namespace {

namespace net = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using namespace agentsim::console;

double seconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The simulated TV (1080p, the built-in profile) and the started plug-in, once per process.
const agentsim::PluginEntryPoints& startedPlugin() {
    static agentsim::SimulatedTv tv(agentsim::TvOptions{});
    static const agentsim::PluginEntryPoints plugin = [] {
        const QuietStdout quiet;
        agentsim::PluginEntryPoints loaded = agentsim::loadPlugin(agentsim::defaultPluginPath());
        loaded.initialize();
        return loaded;
    }();
    return plugin;
}

// Frames only, behind the console's own access rules.
class FrameRouter : public Router {
public:
    explicit FrameRouter(FramePump& frames) : frames_(frames) {}
    void handle(HttpRequest request, Responder respond) override {
        serveFrameRequest(frames_, request, std::move(respond));
    }

private:
    FramePump& frames_;
};

// The console's frame route on a free loopback port, with its network thread.
class FrameRoute {
public:
    FrameRoute()
        : server_(io_, "127.0.0.1", 0),
          guard_("127.0.0.1", server_.port(), newAccessToken()),
          pump_(startedPlugin()),
          router_(pump_) {
        pump_.start();
        server_.start(guard_, router_);
        network_ = std::thread([this] { io_.run(); });
    }
    ~FrameRoute() {
        pump_.stop();
        server_.stop();
        io_.stop();
        network_.join();
    }

    uint16_t port() const { return server_.port(); }
    const std::string& token() const { return guard_.token(); }

private:
    net::io_context io_;
    HttpServer server_;
    AccessGuard guard_;
    FramePump pump_;
    FrameRouter router_;
    std::thread network_;
};

// A page's connection: asks for frames and reads them whole.
class Page {
public:
    explicit Page(const FrameRoute& route) : route_(route), stream_(io_) {
        stream_.connect({net::ip::make_address("127.0.0.1"), route.port()});
    }

    // The frame after `have`; returns its number and counts its bytes.
    uint64_t frame(uint64_t have, int rate) {
        http::request<http::empty_body> request(
            http::verb::get,
            "/api/frame?have=" + std::to_string(have) + "&rate=" + std::to_string(rate), 11);
        request.set(http::field::host, "127.0.0.1:" + std::to_string(route_.port()));
        request.set("X-Console-Token", route_.token());
        http::write(stream_, request);
        http::response_parser<http::string_body> parser;
        parser.body_limit(64 * 1024 * 1024);
        http::read(stream_, buffer_, parser);
        const std::string& body = parser.get().body();
        bytes_ += body.size();
        uint32_t length = 0;
        std::memcpy(&length, body.data(), 4);
        const std::string header = body.substr(4, length);
        const size_t at = header.find("\"seq\":");
        return std::stoull(header.substr(at + 6));
    }

    size_t bytes() const { return bytes_; }

private:
    const FrameRoute& route_;
    net::io_context io_;
    beast::tcp_stream stream_;
    beast::flat_buffer buffer_;
    size_t bytes_ = 0;
};

void report(benchmark::State& state, double wall, double process, double page, size_t bytes) {
    state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()) / wall);
    state.counters["cores"] = benchmark::Counter(process / wall);
    state.counters["server_cores"] = benchmark::Counter((process - page) / wall);
    state.counters["MB/frame"] = benchmark::Counter(static_cast<double>(bytes) / 1e6 /
                                                    static_cast<double>(state.iterations()));
}

// A page on a still screen at `rate` frames per second: each frame after the first carries no
// pixels, only that it came.
void BM_FrameRouteStillScreen(benchmark::State& state) {
    const int rate = static_cast<int>(state.range(0));
    startedPlugin();
    const QuietStdout quiet;
    FrameRoute route;
    Page page(route);
    uint64_t seq = page.frame(0, rate);
    const double wall = seconds(CLOCK_MONOTONIC);
    const double process = seconds(CLOCK_PROCESS_CPUTIME_ID);
    const double pageThread = seconds(CLOCK_THREAD_CPUTIME_ID);
    const size_t before = page.bytes();
    for (auto _ : state) {
        seq = page.frame(seq, rate);
    }
    report(state, seconds(CLOCK_MONOTONIC) - wall, seconds(CLOCK_PROCESS_CPUTIME_ID) - process,
           seconds(CLOCK_THREAD_CPUTIME_ID) - pageThread, page.bytes() - before);
}
BENCHMARK(BM_FrameRouteStillScreen)->Arg(5)->Arg(10)->UseRealTime()->MinTime(3);

// The worst case: a page that gets every 1080p frame whole (8 MB each) at `rate` frames per
// second, as when every pixel changes.
void BM_FrameRouteWholeFrames(benchmark::State& state) {
    const int rate = static_cast<int>(state.range(0));
    const auto period = std::chrono::duration<double>(1.0 / rate);
    startedPlugin();
    const QuietStdout quiet;
    FrameRoute route;
    Page page(route);
    page.frame(0, rate);
    const double wall = seconds(CLOCK_MONOTONIC);
    const double process = seconds(CLOCK_PROCESS_CPUTIME_ID);
    const double pageThread = seconds(CLOCK_THREAD_CPUTIME_ID);
    const size_t before = page.bytes();
    auto next = std::chrono::steady_clock::now();
    for (auto _ : state) {
        // The page paces itself, as the console's page does.
        next += std::chrono::duration_cast<std::chrono::steady_clock::duration>(period);
        std::this_thread::sleep_until(next);
        page.frame(0, rate);
    }
    report(state, seconds(CLOCK_MONOTONIC) - wall, seconds(CLOCK_PROCESS_CPUTIME_ID) - process,
           seconds(CLOCK_THREAD_CPUTIME_ID) - pageThread, page.bytes() - before);
}
BENCHMARK(BM_FrameRouteWholeFrames)->Arg(5)->Arg(10)->UseRealTime()->MinTime(3);

// One frame fetched from the plug-in and tiled, as fast as it goes on one thread: the pump's
// share of the route.
void BM_CaptureAndTileFrame1080p(benchmark::State& state) {
    const agentsim::PluginEntryPoints& plugin = startedPlugin();
    const QuietStdout quiet;
    Frame frame;
    captureFrame(plugin, frame);
    for (auto _ : state) {
        if (!captureFrame(plugin, frame)) {
            state.SkipWithError("no frame delivered");
            break;
        }
        benchmark::DoNotOptimize(frame.tiles);
    }
}
BENCHMARK(BM_CaptureAndTileFrame1080p)->MeasureProcessCPUTime();

}  // namespace

BENCHMARK_MAIN();
