#include "Screen.h"

#include <stdexcept>
#include <string>

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
    for (int attempt = 1; attempt <= kTries; ++attempt) {
        Frame frame;
        frame.width = agent.plugin().getVideoWidth();
        frame.height = agent.plugin().getVideoHeight();
        const size_t bytes = frameBytesOf(frame.width, frame.height);
        if (bytes == 0) {
            throw std::runtime_error("agentsim: the plug-in reports a screen of " +
                                     std::to_string(frame.width) + " x " +
                                     std::to_string(frame.height) + " pixels");
        }
        frame.rgba.resize(bytes);
        const int32_t result = agent.plugin().fillVideoBuffer(
            frame.rgba.data(), static_cast<uint32_t>(frame.rgba.size()));
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

}  // namespace agentsim
