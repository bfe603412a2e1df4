#include "FrameCodec.h"

#include <json/value.h>

#include <cstring>
#include <string>

#include "JsonText.h"

namespace agentsim::console {
namespace {

constexpr size_t kPixelBytes = 4;

// A tile row's bytes folded into its hash, eight bytes at a time (four at the end of a row whose
// width is odd).
uint64_t fold(uint64_t hash, const unsigned char* bytes, size_t count) {
    size_t offset = 0;
    for (; offset + 8 <= count; offset += 8) {
        uint64_t word;
        std::memcpy(&word, bytes + offset, 8);
        hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 29;
    }
    if (offset < count) {
        uint32_t word;
        std::memcpy(&word, bytes + offset, 4);
        hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 29;
    }
    return hash;
}

int32_t tilesAcross(int32_t side) {
    return (side + kTileSide - 1) / kTileSide;
}

Json::Value header(uint64_t seq, int32_t width, int32_t height, const FrameCounters& counters) {
    Json::Value json(Json::objectValue);
    json["seq"] = Json::Value::UInt64(seq);
    json["width"] = width;
    json["height"] = height;
    json["rects"] = Json::Value(Json::arrayValue);
    json["fills"] = Json::Value::UInt64(counters.fills);
    json["frames"] = Json::Value::UInt64(counters.frames);
    json["misses"] = Json::Value::UInt64(counters.misses);
    json["rate"] = counters.rate;
    return json;
}

std::string withLength(const std::string& text) {
    const uint32_t length = static_cast<uint32_t>(text.size());
    std::string bytes(4, '\0');
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<char>((length >> (8 * i)) & 0xFF);
    }
    return bytes + text;
}

}  // namespace

TileHashes hashTiles(const unsigned char* rgba, int32_t width, int32_t height) {
    TileHashes tiles;
    tiles.width = width;
    tiles.height = height;
    const int32_t across = tilesAcross(width);
    tiles.hashes.assign(static_cast<size_t>(across) * tilesAcross(height), 0);
    const size_t rowBytes = static_cast<size_t>(width) * kPixelBytes;
    for (int32_t y = 0; y < height; ++y) {
        const unsigned char* row = rgba + static_cast<size_t>(y) * rowBytes;
        uint64_t* hashes = tiles.hashes.data() + static_cast<size_t>(y / kTileSide) * across;
        for (int32_t column = 0; column < across; ++column) {
            const size_t start = static_cast<size_t>(column) * kTileSide * kPixelBytes;
            const size_t count = std::min(rowBytes - start, kTileSide * kPixelBytes);
            hashes[column] = fold(hashes[column], row + start, count);
        }
    }
    return tiles;
}

std::vector<Rectangle> changedAreas(const TileHashes& frame, const TileHashes* base) {
    const Rectangle whole{0, 0, frame.width, frame.height};
    if (base == nullptr || base->width != frame.width || base->height != frame.height) {
        return {whole};
    }
    const int32_t across = tilesAcross(frame.width);
    std::vector<Rectangle> areas;
    size_t changedTiles = 0;
    for (int32_t tileRow = 0; tileRow < tilesAcross(frame.height); ++tileRow) {
        const size_t first = static_cast<size_t>(tileRow) * across;
        int32_t runStart = -1;
        for (int32_t column = 0; column <= across; ++column) {
            const bool changed =
                column < across && frame.hashes[first + column] != base->hashes[first + column];
            changedTiles += changed ? 1 : 0;
            if (changed && runStart < 0) {
                runStart = column;
            } else if (!changed && runStart >= 0) {
                const int32_t y = tileRow * kTileSide;
                const int32_t x = runStart * kTileSide;
                areas.push_back({x, y, std::min(column * kTileSide, frame.width) - x,
                                 std::min(kTileSide, frame.height - y)});
                runStart = -1;
            }
        }
    }
    // Past half the picture, one rectangle sent straight from the frame costs less.
    if (changedTiles * 2 > frame.hashes.size()) {
        return {whole};
    }
    return areas;
}

Payload encodeFrame(const std::shared_ptr<const Frame>& frame, const TileHashes* base,
                    const FrameCounters& counters) {
    const std::vector<Rectangle> areas = changedAreas(*frame->tiles, base);
    Json::Value json = header(frame->seq, frame->width, frame->height, counters);
    for (const Rectangle& area : areas) {
        Json::Value rectangle(Json::arrayValue);
        rectangle.append(area.x);
        rectangle.append(area.y);
        rectangle.append(area.width);
        rectangle.append(area.height);
        json["rects"].append(rectangle);
    }
    const size_t rowBytes = static_cast<size_t>(frame->width) * kPixelBytes;
    const bool whole =
        areas.size() == 1 && areas[0].width == frame->width && areas[0].height == frame->height;
    if (whole) {
        // The picture goes out from the frame itself, which the payload keeps alive.
        auto parts = std::make_shared<std::pair<std::string, std::shared_ptr<const Frame>>>(
            withLength(simjson::compact(json)), frame);
        Payload payload;
        payload.pieces.emplace_back(parts->first.data(), parts->first.size());
        payload.pieces.emplace_back(frame->rgba.data(), rowBytes * frame->height);
        payload.owner = std::move(parts);
        return payload;
    }
    std::string bytes = withLength(simjson::compact(json));
    for (const Rectangle& area : areas) {
        for (int32_t y = area.y; y < area.y + area.height; ++y) {
            const auto* start = frame->rgba.data() + static_cast<size_t>(y) * rowBytes +
                                static_cast<size_t>(area.x) * kPixelBytes;
            bytes.append(reinterpret_cast<const char*>(start),
                         static_cast<size_t>(area.width) * kPixelBytes);
        }
    }
    return Payload::of(std::move(bytes));
}

Payload encodeNoChange(uint64_t seq, const FrameCounters& counters) {
    return Payload::of(withLength(simjson::compact(header(seq, 0, 0, counters))));
}

}  // namespace agentsim::console
