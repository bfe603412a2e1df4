// The console's routes: the page and its files, and the JSON API over the backend, the frame
// pump and the feed. Plug-in calls run on worker threads, one at a time per command (so that a
// remote's presses arrive in order while a long download runs beside them), as an agent that
// serves each command's requests in turn would make them.
#pragma once

#include <json/value.h>

#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>
#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "AccessGuard.h"
#include "ConsoleBackend.h"
#include "FeedCollector.h"
#include "FramePump.h"
#include "HttpTypes.h"

namespace agentsim::console {

class ConsoleApi : public Router {
public:
    ConsoleApi(const AccessGuard& guard, ConsoleBackend& backend, FramePump& frames, Feed& feed,
               FeedCollector& collector);
    ~ConsoleApi() override;

    void handle(HttpRequest request, Responder respond) override;
    // Lets the calls under way finish; later ones are not run.
    void stop();

private:
    using Work = std::function<Json::Value()>;
    using Lane = boost::asio::strand<boost::asio::thread_pool::executor_type>;

    void handleApi(const HttpRequest& request, Responder& respond);
    bool handleCommand(const HttpRequest& request, Responder& respond);
    bool handleControl(const HttpRequest& request, Responder& respond);
    void servePage(const HttpRequest& request, Responder& respond);
    // Runs `work` on the worker threads after the calls queued before it in `lane`, then answers
    // with its JSON (or with the status of the ApiError it threw).
    void runInLane(const std::string& lane, Work work, Responder respond);

    const AccessGuard& guard_;
    ConsoleBackend& backend_;
    FramePump& frames_;
    Feed& feed_;
    FeedCollector& collector_;
    boost::asio::thread_pool workers_;
    std::mutex lanesMutex_;
    std::map<std::string, Lane> lanes_;
};

// Answers GET /api/frame?have=SEQ&rate=N (frames per second, 1 to 10) from `frames`; ApiError
// 400 for a malformed query.
void serveFrameRequest(FramePump& frames, const HttpRequest& request, Responder respond);

// The request body as a JSON object; ApiError 415 or 400 when it is not one.
Json::Value jsonObjectBody(const HttpRequest& request);

}  // namespace agentsim::console
