// Fetching a screen frame through the plug-in, as the agent's remote view does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "Agent.h"

namespace agentsim {

struct Frame {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<unsigned char> rgba;
};

// The bytes of an RGBA frame of that size; 0 for a size that no screen of the TV can have.
size_t frameBytesOf(int32_t width, int32_t height);

// Captures are asynchronous (each call returns the frame the previous call asked for), so this
// asks until a frame arrives or the tries run out, showing progress on `out`.
std::optional<Frame> fetchFrame(Agent& agent);

// Fetches a frame and saves it as PNG; returns false (with a message on `out`) when none came.
bool saveScreen(Agent& agent, const std::string& path);

// What the simulated TV shows now, in a few indented lines for a person.
void printTvScreen(std::FILE* out);

}  // namespace agentsim
