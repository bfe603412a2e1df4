#include "Screen.h"

#include <stdexcept>
#include <string>

#include "JsonText.h"
#include "PngFile.h"
#include "Progress.h"
#include "tvsim/TvSim.h"

namespace agentsim {

size_t frameBytesOf(int32_t width, int32_t height) {
    const int32_t largest = tvsim::Tv::largestScreenSide();
    if (width <= 0 || height <= 0 || width > largest || height > largest) {
        return 0;
    }
    return static_cast<size_t>(width) * static_cast<size_t>(height) * 4;
}

std::optional<Frame> fetchFrame(Agent& agent) {
    constexpr int kTries = 10;
    Progress progress(agent.out(), "waiting for a screen frame");
    const auto fill = [&agent](Frame& frame) {
        frame.width = agent.plugin().getVideoWidth();
        frame.height = agent.plugin().getVideoHeight();
        const size_t bytes = frameBytesOf(frame.width, frame.height);
        if (bytes == 0) {
            throw std::runtime_error("agentsim: the plug-in reports a screen of " +
                                     std::to_string(frame.width) + " x " +
                                     std::to_string(frame.height) + " pixels");
        }
        frame.rgba.resize(bytes);
        return agent.plugin().fillVideoBuffer(frame.rgba.data(),
                                              static_cast<uint32_t>(frame.rgba.size()));
    };
    // A call returns what the call before it had the TV capture, which may be an older
    // picture: the first call only has the TV capture what it shows now.
    Frame older;
    fill(older);
    for (int attempt = 1; attempt <= kTries; ++attempt) {
        Frame frame;
        const int32_t result = fill(frame);
        if (result == 0) {
            progress.done("arrived at try " + std::to_string(attempt));
            return frame;
        }
        progress.tick("try " + std::to_string(attempt) + " of " + std::to_string(kTries) +
                      " gave " + std::to_string(result));
        tvsim::Tv::instance().sleepFor(0.1);
    }
    progress.done("none after " + std::to_string(kTries) + " tries");
    return std::nullopt;
}

bool saveScreen(Agent& agent, const std::string& path) {
    const std::optional<Frame> frame = fetchFrame(agent);
    if (!frame) {
        return false;
    }
    writePng(path, frame->width, frame->height, frame->rgba.data());
    std::fprintf(agent.out(), "  saved a %d x %d frame as %s\n", frame->width, frame->height,
                 path.c_str());
    return true;
}

namespace {

std::string joined(const Json::Value& lines) {
    std::string text;
    for (const Json::Value& line : lines) {
        if (!line.asString().empty()) {
            text += (text.empty() ? "" : " | ") + line.asString();
        }
    }
    return text;
}

std::string sourceText(const Json::Value& source) {
    const std::string shows = source["shows"].asString();
    if (shows == "channel") {
        return "TV channel " + std::to_string(source["channel"].asInt()) + " (" +
               source["channelName"].asString() + "): " + source["programme"].asString();
    }
    return source["name"].asString() + ": " +
           (shows == "device" ? source["device"].asString() : source["message"].asString());
}

}  // namespace

void printTvScreen(std::FILE* out) {
    Json::Value screen;
    simjson::ParseError error;
    if (!simjson::parse(tvsim::Tv::instance().describeScreen(), screen, error)) {
        return;
    }
    if (screen["standby"].asBool()) {
        std::fprintf(out, "  the TV is in standby\n");
        return;
    }
    std::fprintf(out, "  the TV shows %s\n", sourceText(screen["source"]).c_str());
    if (screen.isMember("menu")) {
        const Json::Value& menu = screen["menu"];
        const Json::Value& row = menu["rows"][menu["highlighted"].asUInt()];
        std::fprintf(
            out, "  on screen: the menu \"%s\" at \"%s\"%s\n", menu["title"].asCString(),
            row["label"].asCString(),
            row["value"].asString().empty() ? "" : (" (" + row["value"].asString() + ")").c_str());
    }
    if (screen.isMember("banner")) {
        std::fprintf(out, "  on screen: a %s banner: %s\n", screen["banner"]["kind"].asCString(),
                     joined(screen["banner"]["lines"]).c_str());
    }
    if (screen.isMember("volume")) {
        std::fprintf(out, "  on screen: the volume bar at %d%s\n",
                     screen["volume"]["level"].asInt(),
                     screen["volume"]["muted"].asBool() ? ", muted" : "");
    }
    if (screen.isMember("dialog")) {
        const Json::Value& dialog = screen["dialog"];
        std::fprintf(
            out, "  on screen: the \"%s\" box: %s%s\n", dialog["title"].asCString(),
            joined(dialog["text"]).c_str(),
            dialog.isMember("code") ? (" [" + dialog["code"].asString() + "]").c_str() : "");
    }
    if (screen.isMember("notice")) {
        std::fprintf(out, "  on screen: \"%s\"\n", screen["notice"].asCString());
    }
    if (screen.isMember("badge")) {
        std::fprintf(out, "  on screen: the mark \"%s\"\n", screen["badge"].asCString());
    }
}

}  // namespace agentsim
