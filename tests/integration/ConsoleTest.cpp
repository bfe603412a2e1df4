// agentsim's support console over HTTP, as a browser or a script uses it: the built agentsim
// serving on a free port, its API, its frames, the session flow and its access rules.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/value.h>
#include <sys/socket.h>
#include <unistd.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <thread>

#include "JsonText.h"
#include "support/HttpClient.h"
#include "support/ProcessRun.h"

namespace {

using testing::HasSubstr;
using testing_support::EventStreamReader;
using testing_support::HttpAnswer;
using testing_support::HttpCall;
using testing_support::httpCall;
using testing_support::ProcessResult;
using testing_support::RunningProcess;
using testing_support::runProcess;
using Headers = std::vector<std::pair<std::string, std::string>>;
namespace net = boost::asio;

constexpr auto kStartUp = std::chrono::seconds(30);
constexpr auto kPatience = std::chrono::seconds(20);
constexpr const char* kPictureTool = "7A31B2_LIVE_SUPPORT_PICTURE_DIAGNOSE_TOOL";
constexpr const char* kRemote = "FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON";
constexpr const char* kDownload = "FFFFFF_LIVE_SUPPORT_GET_DEVICE_CONFIG";

std::string dataFile(const std::string& name) {
    std::ifstream file(std::string(NORVANE_TEST_DATA_DIR) + "/console/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

Json::Value parsed(const std::string& text) {
    Json::Value json;
    simjson::ParseError error;
    EXPECT_TRUE(simjson::parse(text, json, error)) << error.message << " in " << text;
    return json;
}

struct FrameAnswer {
    Json::Value header;
    size_t pixelBytes = 0;
};

FrameAnswer decodeFrame(const std::string& body) {
    FrameAnswer frame;
    if (body.size() < 4) {
        ADD_FAILURE() << "a frame answer of " << body.size() << " bytes";
        return frame;
    }
    uint32_t length = 0;
    std::memcpy(&length, body.data(), 4);
    frame.header = parsed(body.substr(4, length));
    frame.pixelBytes = body.size() - 4 - length;
    return frame;
}

// The line of the program's output that holds `text`, once it has been printed whole; nothing
// when it has not come within `patience`.
std::optional<std::string> lineHolding(const RunningProcess& program, const std::string& text,
                                       std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const std::string output = program.outputSoFar();
        const size_t at = output.find(text);
        const size_t end = at == std::string::npos ? at : output.find('\n', at);
        if (end != std::string::npos) {
            const size_t start = output.rfind('\n', at);
            return output.substr(start == std::string::npos ? 0 : start + 1,
                                 end - (start == std::string::npos ? 0 : start + 1));
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return std::nullopt;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

// One agentsim console on a free port, with simulated time 100 times faster.
class Console : public testing::Test {
protected:
    void SetUp() override { start({"--time-scale", "100", "console", "--port", "0"}); }

    void start(const std::vector<std::string>& arguments) {
        process_ = std::make_unique<RunningProcess>(NORVANE_AGENTSIM_PATH, arguments);
        const auto line = lineHolding(*process_, "agentsim console: http://", kStartUp);
        ASSERT_TRUE(line) << process_->outputSoFar();
        std::smatch match;
        ASSERT_TRUE(std::regex_search(*line, match, std::regex(R"(:(\d+)/\?token=([0-9a-f]{32}))")))
            << *line;
        port_ = static_cast<uint16_t>(std::stoi(match[1]));
        token_ = match[2];
        const auto files = lineHolding(*process_, "The simulated TV's files: ", kStartUp);
        ASSERT_TRUE(files);
        root_ = files->substr(files->find(": ") + 2);
        root_ = root_.substr(0, root_.find(' '));
    }

    std::string origin() const { return "http://127.0.0.1:" + std::to_string(port_); }
    Headers tokenHeader() const { return {{"X-Console-Token", token_}}; }

    HttpAnswer get(const std::string& target, Headers headers = {}) {
        HttpCall call;
        call.target = target;
        call.headers = headers.empty() ? tokenHeader() : headers;
        return httpCall(port_, call);
    }

    HttpAnswer post(const std::string& target, const std::string& body, Headers headers = {}) {
        HttpCall call;
        call.method = "POST";
        call.target = target;
        call.headers = headers.empty() ? Headers{{"X-Console-Token", token_},
                                                 {"Origin", origin()},
                                                 {"Content-Type", "application/json"}}
                                       : headers;
        call.body = body;
        return httpCall(port_, call);
    }

    Json::Value postJson(const std::string& target, const std::string& body) {
        HttpAnswer answer = post(target, body);
        EXPECT_EQ(answer.status, 200) << target << ": " << answer.body;
        return parsed(answer.body);
    }

    // Asks for the state until `done` holds; the last state read.
    Json::Value stateWhen(const std::function<bool(const Json::Value&)>& done) {
        const auto deadline = std::chrono::steady_clock::now() + kPatience;
        Json::Value state;
        do {
            state = parsed(get("/api/state").body);
        } while (!done(state) && std::chrono::steady_clock::now() < deadline);
        return state;
    }

    // The first frame newer than `have`: a request that waited in vain (the answer without a
    // newer frame) is asked again, so that a slow machine or emulator only takes longer.
    FrameAnswer frame(uint64_t have, int rate = 10) {
        const auto deadline = std::chrono::steady_clock::now() + kPatience;
        FrameAnswer answer;
        do {
            HttpAnswer reply =
                get("/api/frame?have=" + std::to_string(have) + "&rate=" + std::to_string(rate));
            EXPECT_EQ(reply.status, 200) << reply.body;
            EXPECT_EQ(reply.headers["content-type"], "application/octet-stream");
            answer = decodeFrame(reply.body);
        } while (answer.header["seq"].asUInt64() == have &&
                 std::chrono::steady_clock::now() < deadline);
        return answer;
    }

    // Stops the console as Ctrl-C does; how it ended.
    ProcessResult interrupt(int signal) {
        process_->signal(signal);
        return process_->wait();
    }

    std::unique_ptr<RunningProcess> process_;
    uint16_t port_ = 0;
    std::string token_;
    std::string root_;
};

TEST_F(Console, ListsTheCatalogueWithCategoriesNamesAndOrder) {
    HttpAnswer answer = get("/api/catalogue");
    ASSERT_EQ(answer.status, 200);
    EXPECT_EQ(answer.headers["content-type"], "application/json");
    EXPECT_EQ(answer.body + "\n", dataFile("catalogue.json"));
}

TEST_F(Console, DescribesACommandByIdOrNumber) {
    HttpAnswer byId = get("/api/commands/7A31B2_LIVE_SUPPORT_PQ_AQ_RESET/descriptor");
    ASSERT_EQ(byId.status, 200);
    EXPECT_EQ(byId.body + "\n", dataFile("pq_aq_reset_descriptor.json"));
    EXPECT_EQ(get("/api/commands/14/descriptor").body, byId.body);

    // A handler result other than 0 is shown as the plug-in gave it.
    const Json::Value info =
        parsed(get("/api/commands/FFFFFF_LIVE_SUPPORT_GET_DEVICE_INFO/descriptor").body);
    EXPECT_EQ(info["result"], 5);
    EXPECT_EQ(simjson::compact(info["document"]), "{}");
}

TEST_F(Console, GetAndExecuteChangeThePictureModeOnTheTv) {
    EventStreamReader feed(port_, tokenHeader());
    ASSERT_EQ(feed.status(), 200);
    const std::string tool = std::string("/api/commands/") + kPictureTool;
    const Json::Value before = postJson(tool + "/get", "{}");
    EXPECT_EQ(before["result"], 0);
    EXPECT_EQ(before["document"]["PICTURE_MODE"], "Standard");

    Json::Value input = before["document"];
    input["PICTURE_MODE"] = "Vivid";
    const Json::Value executed = postJson(tool + "/exec", simjson::compact(input));
    EXPECT_EQ(executed["result"], 0);
    EXPECT_EQ(simjson::compact(executed["output"]), "{}");
    EXPECT_EQ(postJson(tool + "/get", "{}")["document"]["PICTURE_MODE"], "Vivid");
    EXPECT_TRUE(feed.readUntil("action marlo.sl2.action.video.set.picture.adjustment", kPatience))
        << feed.received();
}

TEST_F(Console, ShowsHandlerResultsAndDownloadsAsThePlugInGivesThem) {
    const Json::Value missing = postJson(std::string("/api/commands/") + kRemote + "/exec", "{}");
    EXPECT_EQ(missing["result"], 3) << "no BUTTONS: invalid parameter";

    // Log1 before any Log0: the command's own text, base64.
    const Json::Value empty = postJson(std::string("/api/commands/") + kDownload + "/exec",
                                       R"({"DOWNLOAD_FILE_TYPE":"Log1"})");
    EXPECT_EQ(empty["result"], 0);
    EXPECT_EQ(empty["output"], "VGhlIGZpbGUgaXMgZW1wdHku");

    const Json::Value log = postJson(std::string("/api/commands/") + kDownload + "/exec",
                                     R"({"DOWNLOAD_FILE_TYPE":"Log0"})");
    EXPECT_EQ(log["result"], 0);
    ASSERT_TRUE(log["output"].isString());
    EXPECT_GT(log["output"].asString().size(), 100u);
}

TEST_F(Console, DeliversFramesAndThenOnlyWhatChanged) {
    const FrameAnswer first = frame(0);
    const uint64_t seq = first.header["seq"].asUInt64();
    ASSERT_GE(seq, 1u);
    EXPECT_EQ(first.header["width"], 1920);
    EXPECT_EQ(first.header["height"], 1080);
    EXPECT_EQ(simjson::compact(first.header["rects"]), "[[0,0,1920,1080]]");
    EXPECT_EQ(first.pixelBytes, 1920u * 1080u * 4u);
    EXPECT_GE(first.header["misses"].asInt(), 1) << "the very first fill finds no screenshot";

    const FrameAnswer next = frame(seq);
    EXPECT_GT(next.header["seq"].asUInt64(), seq);
    EXPECT_EQ(next.header["rects"].size(), 0u) << "a still screen sends no pixels again";
    EXPECT_EQ(next.pixelBytes, 0u);
    EXPECT_EQ(next.header["rate"], 10);

    EXPECT_EQ(get("/api/frame?have=0&rate=11").status, 400);
    EXPECT_EQ(get("/api/frame?have=x").status, 400);
}

TEST_F(Console, TwoPagesGetFramesWhileAThirdNeverReadsItsOwn) {
    // A client that asks for a whole frame and then reads nothing.
    net::io_context io;
    net::ip::tcp::socket stalled(io);
    stalled.connect({net::ip::make_address("127.0.0.1"), port_});
    const int small = 4096;
    setsockopt(stalled.native_handle(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
    const std::string request =
        "GET /api/frame?have=0&rate=10 HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port_) +
        "\r\nX-Console-Token: " + token_ + "\r\n\r\n";
    net::write(stalled, net::buffer(request));
    // And one that sends half a request and stops.
    net::ip::tcp::socket halfway(io);
    halfway.connect({net::ip::make_address("127.0.0.1"), port_});
    net::write(halfway, net::buffer(std::string("GET /api/catalogue HTTP/1.1\r\nHo")));

    // Each page gets three frames after its first.
    uint64_t a = frame(0).header["seq"].asUInt64();
    uint64_t b = frame(0, 3).header["seq"].asUInt64();
    for (int round = 0; round < 3; ++round) {
        const uint64_t nextA = frame(a).header["seq"].asUInt64();
        const uint64_t nextB = frame(b, 3).header["seq"].asUInt64();
        EXPECT_GT(nextA, a);
        EXPECT_GT(nextB, b);
        a = nextA;
        b = nextB;
    }
    EXPECT_EQ(get("/api/catalogue").status, 200);
}

TEST_F(Console, RunsTheSessionFlowOfTheTvMenuAndTheAgentsServer) {
    EventStreamReader feed(port_, tokenHeader());
    EXPECT_EQ(post("/api/host/engineer", R"({"connected":true})").status, 409)
        << "no code is out yet";
    postJson("/api/tv/remote-support", R"({"on":true})");
    postJson("/api/tv/session-code", "{}");
    Json::Value state =
        stateWhen([](const Json::Value& s) { return s["tv"]["sessionCode"] == "123456"; });
    EXPECT_EQ(state["tv"]["sessionCode"], "123456");
    EXPECT_EQ(state["tv"]["remoteSupport"], "on");
    EXPECT_EQ(state["host"]["state"], 4);
    EXPECT_EQ(state["host"]["code"], "123456");
    state =
        stateWhen([](const Json::Value& s) { return s["screen"]["dialog"]["code"] == "123456"; });
    EXPECT_EQ(state["screen"]["dialog"]["title"], "Remote Support") << "the TV shows the code";

    postJson("/api/host/engineer", R"({"connected":true})");
    state = stateWhen([](const Json::Value& s) { return s["tv"]["notify"] == 1; });
    EXPECT_EQ(state["tv"]["notify"], 1);
    EXPECT_EQ(state["host"]["stateName"], "engineer connected");
    EXPECT_TRUE(feed.readUntil("(the TV shows: an engineer is connected)", kPatience));

    postJson("/api/host/engineer", R"({"connected":false})");
    state = stateWhen([](const Json::Value& s) { return s["tv"]["notify"] == 2; });
    EXPECT_EQ(state["tv"]["notify"], 2);
    EXPECT_TRUE(feed.readUntil("(the TV shows: the session has ended)", kPatience));
    EXPECT_THAT(feed.received(), HasSubstr("ZelSessionInit(1)"));
    EXPECT_THAT(feed.received(), HasSubstr("the engineer connects with the session code"));
}

TEST_F(Console, TellsTheViewerWhatTheServerAnswered) {
    postJson("/api/tv/remote-support", R"({"on":true})");
    postJson("/api/host/start-answer", R"({"answer":"serverError"})");
    EXPECT_EQ(parsed(get("/api/state").body)["host"]["startAnswer"], "serverError");
    postJson("/api/tv/session-code", "{}");
    EXPECT_EQ(stateWhen([](const Json::Value& s) {
                  return s["tv"]["sessionCode"] == "serverError";
              })["tv"]["sessionCode"],
              "serverError");

    postJson("/api/tv/network", R"({"up":false})");
    postJson("/api/tv/session-code", "{}");
    const Json::Value state =
        stateWhen([](const Json::Value& s) { return s["tv"]["sessionCode"] == "networkError"; });
    EXPECT_EQ(state["tv"]["sessionCode"], "networkError");
    EXPECT_EQ(state["tv"]["network"], false);

    EXPECT_EQ(postJson("/api/time-scale", R"({"scale":50})")["timeScale"], 50.0);
    EXPECT_EQ(post("/api/time-scale", R"({"scale":0})").status, 400);
    EXPECT_EQ(post("/api/host/start-answer", R"({"answer":"maybe"})").status, 400);
}

TEST_F(Console, ServesThePageOnlyWithTheToken) {
    HttpAnswer locked = get("/", {{"Accept", "text/html"}});
    EXPECT_EQ(locked.status, 401);
    EXPECT_THAT(locked.body, HasSubstr("Open it with the address that agentsim printed"));
    EXPECT_EQ(get("/?token=0123", {{"Accept", "text/html"}}).status, 401);

    HttpAnswer entry = get("/?token=" + token_, {{"Accept", "text/html"}});
    EXPECT_EQ(entry.status, 303);
    EXPECT_EQ(entry.headers["location"], "/");
    const std::string cookie = entry.headers["set-cookie"];
    EXPECT_THAT(cookie, HasSubstr("HttpOnly"));
    EXPECT_THAT(cookie, HasSubstr("SameSite=Strict"));

    HttpAnswer page = get("/", {{"Cookie", cookie.substr(0, cookie.find(';'))}});
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.headers["content-type"], "text/html; charset=utf-8");
    EXPECT_THAT(page.body, HasSubstr("<script type=\"module\" src=\"/js/main.js\">"));
    EXPECT_THAT(page.headers["content-security-policy"], HasSubstr("default-src 'self'"));
    HttpAnswer script = get("/js/main.js");
    EXPECT_EQ(script.status, 200);
    EXPECT_EQ(script.headers["content-type"], "text/javascript; charset=utf-8");
    EXPECT_EQ(get("/js/none.js").status, 404);
}

TEST_F(Console, RefusesWhatBreaksItsRules) {
    const std::string host = "127.0.0.1:" + std::to_string(port_);
    EXPECT_EQ(get("/api/catalogue", {{"X-Console-Token", token_}, {"Host", "evil.example"}}).status,
              403);
    EXPECT_EQ(get("/api/catalogue", {{"X-Console-Token", token_},
                                     {"Host", "rebound.example:" + std::to_string(port_)}})
                  .status,
              403);
    EXPECT_EQ(get("/api/catalogue", {{"Accept", "*/*"}}).status, 401);
    EXPECT_EQ(get("/api/feed", {{"Accept", "text/event-stream"}}).status, 401);
    EXPECT_EQ(get("/api/catalogue", {{"X-Console-Token", std::string(32, '0')}}).status, 401);

    const Headers crossOrigin = {{"X-Console-Token", token_},
                                 {"Origin", "http://evil.example"},
                                 {"Content-Type", "application/json"}};
    HttpAnswer refused = post("/api/tv/remote-support", R"({"on":true})", crossOrigin);
    EXPECT_EQ(refused.status, 403);
    EXPECT_THAT(refused.body, HasSubstr("console's own page"));
    EXPECT_EQ(post("/api/tv/remote-support", R"({"on":true})",
                   {{"X-Console-Token", token_}, {"Content-Type", "application/json"}})
                  .status,
              403)
        << "no Origin at all";
    EXPECT_EQ(parsed(get("/api/state").body)["tv"]["remoteSupport"], "unset");

    HttpAnswer oversized =
        post("/api/commands/1/exec", "{\"x\":\"" + std::string(1024 * 1024, 'a') + "\"}");
    EXPECT_EQ(oversized.status, 413);
    HttpAnswer malformed = post("/api/commands/1/exec", "{\"x\":");
    EXPECT_EQ(malformed.status, 400);
    EXPECT_THAT(parsed(malformed.body)["error"].asString(), HasSubstr("malformed JSON at line 1"));
    EXPECT_EQ(post("/api/commands/1/exec", "[1]").status, 400);
    EXPECT_EQ(post("/api/commands/1/exec", "{}} ").status, 400);
    EXPECT_EQ(
        post("/api/commands/1/exec", "{}",
             {{"X-Console-Token", token_}, {"Origin", origin()}, {"Content-Type", "text/plain"}})
            .status,
        415);

    HttpAnswer unknown = post("/api/commands/NO_SUCH_COMMAND/exec", "{}");
    EXPECT_EQ(unknown.status, 404);
    EXPECT_THAT(unknown.body, HasSubstr("unknown command NO_SUCH_COMMAND"));
    EXPECT_EQ(get("/api/commands/99/descriptor").status, 404);
    EXPECT_EQ(get("/api/nothing").status, 404);
    EXPECT_EQ(get("/api/commands/1/exec").status, 405);
}

TEST_F(Console, StopsCleanlyOnCtrlCAndRemovesTheTvsFiles) {
    ASSERT_TRUE(std::filesystem::is_directory(root_)) << root_;
    EventStreamReader feed(port_, tokenHeader());
    frame(0);
    const ProcessResult result = interrupt(SIGINT);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("agentsim console: stopped"));
    EXPECT_FALSE(std::filesystem::exists(root_)) << root_;
}

TEST_F(Console, StopsOnSigtermToo) {
    EXPECT_EQ(interrupt(SIGTERM).exitCode, 0);
    EXPECT_FALSE(std::filesystem::exists(root_));
}

TEST(ConsoleStartUp, ATakenPortIsAnErrorThatNamesIt) {
    net::io_context io;
    net::ip::tcp::acceptor taken(io, {net::ip::make_address("127.0.0.1"), 0});
    const std::string port = std::to_string(taken.local_endpoint().port());
    const ProcessResult console = runProcess(NORVANE_AGENTSIM_PATH, {"console", "--port", port});
    EXPECT_EQ(console.exitCode, 3);
    EXPECT_THAT(console.err, HasSubstr("cannot listen on 127.0.0.1 port " + port));

    const ProcessResult wrong =
        runProcess(NORVANE_AGENTSIM_PATH, {"console", "--listen", "somewhere"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_THAT(wrong.err, HasSubstr("--listen needs an IP address, not 'somewhere'"));
    EXPECT_EQ(runProcess(NORVANE_AGENTSIM_PATH, {"console", "--port", "1", "2", "3", "4"}).exitCode,
              2);
}

TEST(ConsoleStartUp, ListeningElsewhereWarnsThatTheConsoleControlsATv) {
    RunningProcess console(NORVANE_AGENTSIM_PATH,
                           {"console", "--port", "0", "--listen", "127.0.0.1"});
    ASSERT_TRUE(lineHolding(console, "agentsim console: http://127.0.0.1:", kStartUp));
    console.signal(SIGINT);
    const ProcessResult result = console.wait();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, HasSubstr("warning: the console listens on 127.0.0.1"));
    EXPECT_THAT(result.err, HasSubstr("controls a TV"));
}

}  // namespace
