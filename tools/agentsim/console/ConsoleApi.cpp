#include "ConsoleApi.h"

#include <boost/asio/post.hpp>
#include <cstring>
#include <vector>

#include "JsonText.h"
#include "WebAssets.h"

namespace agentsim::console {
namespace {

constexpr size_t kWorkerThreads = 4;
constexpr const char* kCommandsPrefix = "/api/commands/";

const char* const kLockedPage =
    "<!doctype html><meta charset=\"utf-8\"><title>agentsim support console</title>"
    "<p>This is agentsim's support console. Open it with the "
    "address that agentsim printed when it started: that address carries the console's access "
    "token.</p>\n";

HttpReply htmlReply(int status, std::string_view html) {
    HttpReply reply;
    reply.status = status;
    reply.contentType = "text/html; charset=utf-8";
    reply.body = Payload::of(std::string(html));
    return reply;
}

HttpReply jsonReply(const Json::Value& document) {
    return HttpReply::json(200, simjson::compact(document));
}

std::vector<std::string> segments(const std::string& path) {
    std::vector<std::string> parts;
    size_t start = 1;
    while (start <= path.size()) {
        const size_t end = std::min(path.find('/', start), path.size());
        parts.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

bool boolMember(const Json::Value& body, const char* name) {
    const Json::Value* value = body.find(name, name + std::strlen(name));
    if (value == nullptr || !value->isBool()) {
        throw ApiError(400, std::string("\"") + name + "\" must be true or false");
    }
    return value->asBool();
}

// A whole number from the query, within [low, high]; `fallback` when the query lacks it.
int64_t queryNumber(const HttpRequest& request, const char* name, int64_t fallback, int64_t low,
                    int64_t high) {
    const auto found = request.query.find(name);
    if (found == request.query.end()) {
        return fallback;
    }
    const std::string& text = found->second;
    size_t used = 0;
    int64_t value = 0;
    try {
        value = std::stoll(text, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (text.empty() || used != text.size() || value < low || value > high) {
        throw ApiError(400, std::string("\"") + name + "\" must be a whole number from " +
                                std::to_string(low) + " to " + std::to_string(high));
    }
    return value;
}

void requireMethod(const HttpRequest& request, const char* method) {
    if (request.method != method) {
        throw ApiError(405, request.path + " takes " + method);
    }
}

}  // namespace

Json::Value jsonObjectBody(const HttpRequest& request) {
    if (request.contentType.rfind("application/json", 0) != 0) {
        throw ApiError(415, "send the body as application/json");
    }
    Json::Value document;
    simjson::ParseError error;
    if (!simjson::parse(request.body, document, error)) {
        throw ApiError(400, "malformed JSON at line " + std::to_string(error.line) + ", column " +
                                std::to_string(error.column) + ": " + error.message);
    }
    if (!document.isObject()) {
        throw ApiError(400, "the body must be a JSON object");
    }
    return document;
}

ConsoleApi::ConsoleApi(const AccessGuard& guard, ConsoleBackend& backend, FramePump& frames,
                       Feed& feed, FeedCollector& collector)
    : guard_(guard),
      backend_(backend),
      frames_(frames),
      feed_(feed),
      collector_(collector),
      workers_(kWorkerThreads) {}

ConsoleApi::~ConsoleApi() {
    stop();
}

void ConsoleApi::stop() {
    workers_.stop();
    workers_.join();
}

void ConsoleApi::handle(HttpRequest request, Responder respond) {
    try {
        if (request.path.rfind("/api/", 0) == 0) {
            handleApi(request, respond);
        } else {
            servePage(request, respond);
        }
    } catch (const ApiError& error) {
        // Refusals come before the request is handed on, so the responder is still here.
        respond(HttpReply::error(error.status(), error.what()));
    }
}

void ConsoleApi::servePage(const HttpRequest& request, Responder& respond) {
    requireMethod(request, "GET");
    if (request.path == "/") {
        const auto token = request.query.find("token");
        if (token != request.query.end()) {
            if (!guard_.tokenMatches(token->second)) {
                respond(htmlReply(401, kLockedPage));
                return;
            }
            // The cookie takes over from the URL, which then loses its token.
            HttpReply reply;
            reply.status = 303;
            reply.headers = {{"Location", "/"}, {"Set-Cookie", guard_.cookieHeader()}};
            respond(std::move(reply));
            return;
        }
        if (!request.authorized) {
            respond(htmlReply(401, kLockedPage));
            return;
        }
    }
    const std::optional<WebAsset> asset =
        findWebAsset(request.path == "/" ? "/index.html" : request.path);
    if (!asset) {
        throw ApiError(404, "no such page: " + request.path);
    }
    HttpReply reply;
    reply.contentType = std::string(asset->contentType);
    reply.body.pieces.emplace_back(asset->content.data(), asset->content.size());
    respond(std::move(reply));
}

void ConsoleApi::handleApi(const HttpRequest& request, Responder& respond) {
    const std::string& path = request.path;
    if (path.rfind(kCommandsPrefix, 0) == 0) {
        if (!handleCommand(request, respond)) {
            throw ApiError(404, "no such API: " + path);
        }
        return;
    }
    if (path == "/api/catalogue") {
        requireMethod(request, "GET");
        runInLane(
            "catalogue", [this] { return backend_.catalogue(); }, std::move(respond));
    } else if (path == "/api/device") {
        requireMethod(request, "GET");
        runInLane(
            "device", [this] { return backend_.device(); }, std::move(respond));
    } else if (path == "/api/state") {
        requireMethod(request, "GET");
        respond(jsonReply(backend_.state()));
    } else if (path == "/api/frame") {
        requireMethod(request, "GET");
        serveFrameRequest(frames_, request, respond);
    } else if (path == "/api/feed") {
        requireMethod(request, "GET");
        HttpReply reply;
        reply.contentType = "text/event-stream";
        reply.events = feed_.subscribe();
        respond(std::move(reply));
    } else if (!handleControl(request, respond)) {
        throw ApiError(404, "no such API: " + path);
    }
}

bool ConsoleApi::handleCommand(const HttpRequest& request, Responder& respond) {
    const std::vector<std::string> parts = segments(request.path);
    // api, commands, ID, operation
    if (parts.size() != 4 || parts[2].empty()) {
        return false;
    }
    const std::string& id = parts[2];
    const std::string& operation = parts[3];
    if (!backend_.knows(id)) {
        throw ApiError(404, "unknown command " + id);
    }
    const std::string lane = "command " + id;
    if (operation == "descriptor") {
        requireMethod(request, "GET");
        runInLane(
            lane, [this, id] { return backend_.describe(id); }, std::move(respond));
    } else if (operation == "get") {
        requireMethod(request, "POST");
        Json::Value document = jsonObjectBody(request);
        runInLane(
            lane, [this, id, document] { return backend_.get(id, document); }, std::move(respond));
    } else if (operation == "exec") {
        requireMethod(request, "POST");
        Json::Value document = jsonObjectBody(request);
        runInLane(
            lane, [this, id, document] { return backend_.execute(id, document); },
            std::move(respond));
    } else {
        return false;
    }
    return true;
}

bool ConsoleApi::handleControl(const HttpRequest& request, Responder& respond) {
    using Action = void (*)(ConsoleBackend & backend, const Json::Value& body);
    static const std::map<std::string, Action> kActions = {
        {"/api/tv/remote-support",
         [](ConsoleBackend& backend, const Json::Value& body) {
             backend.setRemoteSupport(boolMember(body, "on"));
         }},
        {"/api/tv/session-code",
         [](ConsoleBackend& backend, const Json::Value&) { backend.askForSessionCode(); }},
        {"/api/tv/network",
         [](ConsoleBackend& backend, const Json::Value& body) {
             backend.setNetwork(boolMember(body, "up"));
         }},
        {"/api/host/engineer",
         [](ConsoleBackend& backend, const Json::Value& body) {
             backend.setEngineerConnected(boolMember(body, "connected"));
         }},
        {"/api/host/start-answer",
         [](ConsoleBackend& backend, const Json::Value& body) {
             const Json::Value& answer = body["answer"];
             backend.setSessionStartAnswer(answer.isString() ? answer.asString() : "");
         }},
        {"/api/time-scale",
         [](ConsoleBackend& backend, const Json::Value& body) {
             const Json::Value& scale = body["scale"];
             if (!scale.isNumeric()) {
                 throw ApiError(400, "\"scale\" must be a number");
             }
             backend.setTimeScale(scale.asDouble());
         }},
    };
    const auto found = kActions.find(request.path);
    if (found == kActions.end()) {
        return false;
    }
    requireMethod(request, "POST");
    Json::Value body = jsonObjectBody(request);
    const Action action = found->second;
    // The TV, the host and the clock are changed in the order the page asked.
    runInLane(
        "control",
        [this, action, body] {
            action(backend_, body);
            collector_.poke();
            return backend_.state();
        },
        std::move(respond));
    return true;
}

void serveFrameRequest(FramePump& frames, const HttpRequest& request, Responder respond) {
    const auto have = static_cast<uint64_t>(queryNumber(request, "have", 0, 0, INT64_MAX));
    const int rate =
        static_cast<int>(queryNumber(request, "rate", 5, kMinFrameRate, kMaxFrameRate));
    frames.request(have, rate, [respond = std::move(respond)](Payload payload) {
        HttpReply reply;
        reply.contentType = "application/octet-stream";
        reply.body = std::move(payload);
        respond(std::move(reply));
    });
}

void ConsoleApi::runInLane(const std::string& lane, Work work, Responder respond) {
    Lane* executor = nullptr;
    {
        std::lock_guard<std::mutex> lock(lanesMutex_);
        auto found = lanes_.find(lane);
        if (found == lanes_.end()) {
            found = lanes_.emplace(lane, boost::asio::make_strand(workers_.get_executor())).first;
        }
        executor = &found->second;
    }
    boost::asio::post(*executor, [work = std::move(work), respond = std::move(respond)] {
        try {
            respond(jsonReply(work()));
        } catch (const ApiError& error) {
            respond(HttpReply::error(error.status(), error.what()));
        } catch (const std::exception& error) {
            respond(HttpReply::error(500, std::string("the plug-in failed: ") + error.what()));
        }
    });
}

}  // namespace agentsim::console
