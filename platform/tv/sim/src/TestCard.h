// The picture the simulated TV shows: a test card, as raw B,G,R,A pixels, rows top to bottom.
#pragma once

#include <cstdint>
#include <vector>

namespace tvsim {

using Picture = std::vector<uint8_t>;

// Eight colour bars (white, yellow, cyan, green, magenta, red, blue, black) in the upper two
// thirds, a grey ramp from black to white below, and the caption "NORVANE TV" in the middle.
Picture renderTestCard(int32_t width, int32_t height);

}  // namespace tvsim
