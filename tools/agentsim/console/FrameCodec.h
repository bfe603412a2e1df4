// Screen frames as the page receives them. A frame is cut into square tiles, each with a hash of
// its pixels; a page that has an earlier frame gets only the tiles that changed since, a page with
// none (or too old a frame) the whole picture. The bytes sent are a 4-byte little-endian length,
// a JSON header of that length naming the rectangles, then each rectangle's RGBA rows in turn.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "HttpTypes.h"

namespace agentsim::console {

constexpr int32_t kTileSide = 64;

struct TileHashes {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint64_t> hashes;  // rows of tiles, top to bottom, left to right
};

struct Frame {
    uint64_t seq = 0;
    int32_t width = 0;
    int32_t height = 0;
    std::vector<unsigned char> rgba;
    std::shared_ptr<const TileHashes> tiles;
};

// What the frame route has done so far; the page shows it.
struct FrameCounters {
    uint64_t fills = 0;   // calls of the frame fill
    uint64_t frames = 0;  // calls that delivered a frame
    uint64_t misses = 0;  // calls that did not
    int rate = 0;         // frames asked for per second now (0: nobody is watching)
};

struct Rectangle {
    int32_t x = 0;
    int32_t y = 0;
    int32_t width = 0;
    int32_t height = 0;
};

TileHashes hashTiles(const unsigned char* rgba, int32_t width, int32_t height);

// The rectangles (runs of tiles in a tile row) where `frame` differs from `base`; the whole frame
// when there is no comparable base or when most of it changed.
std::vector<Rectangle> changedAreas(const TileHashes& frame, const TileHashes* base);

// The bytes for a page that has the frame whose tiles are `base` (null: none).
Payload encodeFrame(const std::shared_ptr<const Frame>& frame, const TileHashes* base,
                    const FrameCounters& counters);
// The answer when no newer frame came in time: no rectangles, `seq` unchanged.
Payload encodeNoChange(uint64_t seq, const FrameCounters& counters);

}  // namespace agentsim::console
