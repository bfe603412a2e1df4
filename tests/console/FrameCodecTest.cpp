// Frames as the page receives them: tile hashes find what changed, and the bytes say where it
// goes.
#include <gtest/gtest.h>
#include <json/value.h>

#include <cstring>
#include <string>

#include "FrameCodec.h"
#include "JsonText.h"

namespace agentsim::console {
namespace {

std::shared_ptr<Frame> patternFrame(int32_t width, int32_t height, uint64_t seq) {
    auto frame = std::make_shared<Frame>();
    frame->seq = seq;
    frame->width = width;
    frame->height = height;
    frame->rgba.resize(static_cast<size_t>(width) * height * 4);
    for (size_t i = 0; i < frame->rgba.size(); ++i) {
        frame->rgba[i] = static_cast<unsigned char>(i * 7 + i / 4096);
    }
    frame->tiles = std::make_shared<const TileHashes>(hashTiles(frame->rgba.data(), width, height));
    return frame;
}

void paint(Frame& frame, int32_t x, int32_t y, unsigned char value) {
    frame.rgba[(static_cast<size_t>(y) * frame.width + x) * 4 + 1] = value;
    frame.tiles =
        std::make_shared<const TileHashes>(hashTiles(frame.rgba.data(), frame.width, frame.height));
}

// The rectangles as "[x,y,width,height]" one after another.
std::string text(const std::vector<Rectangle>& areas) {
    std::string all;
    for (const Rectangle& area : areas) {
        all += "[" + std::to_string(area.x) + "," + std::to_string(area.y) + "," +
               std::to_string(area.width) + "," + std::to_string(area.height) + "]";
    }
    return all;
}

struct Decoded {
    Json::Value header;
    std::string pixels;
};

Decoded decode(const Payload& payload) {
    std::string bytes;
    for (const auto& [data, size] : payload.pieces) {
        bytes.append(static_cast<const char*>(data), size);
    }
    EXPECT_EQ(bytes.size(), payload.size());
    uint32_t length = 0;
    for (int i = 0; i < 4; ++i) {
        length |= static_cast<uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    }
    Decoded decoded;
    simjson::ParseError error;
    EXPECT_TRUE(simjson::parse(bytes.substr(4, length), decoded.header, error)) << error.message;
    decoded.pixels = bytes.substr(4 + length);
    return decoded;
}

TEST(FrameTiles, OnePixelChangesOneTileAtTheEdgesToo) {
    // 150 x 70: the last tile column is 22 pixels wide and the last tile row 6 pixels high.
    auto frame = patternFrame(150, 70, 1);
    const TileHashes before = *frame->tiles;
    ASSERT_EQ(before.hashes.size(), 3u * 2u);
    EXPECT_TRUE(changedAreas(*frame->tiles, &before).empty());

    paint(*frame, 149, 69, 0x55);
    EXPECT_EQ(text(changedAreas(*frame->tiles, &before)), "[128,64,22,6]");
}

TEST(FrameTiles, NeighbouringChangedTilesInARowShareARectangle) {
    auto frame = patternFrame(640, 320, 1);  // 10 x 5 tiles
    const TileHashes before = *frame->tiles;
    paint(*frame, 70, 10, 1);    // tile (1, 0)
    paint(*frame, 130, 10, 1);   // tile (2, 0)
    paint(*frame, 400, 200, 1);  // tile (6, 3)
    EXPECT_EQ(text(changedAreas(*frame->tiles, &before)), "[64,0,128,64][384,192,64,64]");
}

TEST(FrameTiles, NoBaseAnotherSizeOrMostlyChangedMeansTheWholeFrame) {
    auto frame = patternFrame(256, 128, 1);  // 4 x 2 tiles
    const TileHashes before = *frame->tiles;
    const auto whole = [](const std::vector<Rectangle>& areas) {
        return text(areas) == "[0,0,256,128]";
    };
    EXPECT_TRUE(whole(changedAreas(*frame->tiles, nullptr)));
    TileHashes smaller = before;
    smaller.height = 64;
    EXPECT_TRUE(whole(changedAreas(*frame->tiles, &smaller)));
    for (int32_t x : {0, 64, 128, 192}) {
        paint(*frame, x, 70, 9);
    }
    EXPECT_FALSE(whole(changedAreas(*frame->tiles, &before))) << "4 of 8 tiles changed";
    paint(*frame, 0, 0, 9);
    EXPECT_TRUE(whole(changedAreas(*frame->tiles, &before))) << "5 of 8 tiles changed";
}

TEST(FrameEncoding, AWholeFrameCarriesItsPixelsAndTheCounters) {
    auto frame = patternFrame(130, 66, 7);
    const Payload payload = encodeFrame(frame, nullptr, FrameCounters{12, 10, 2, 5});
    const Decoded decoded = decode(payload);
    EXPECT_EQ(simjson::compact(decoded.header),
              "{\"fills\":12,\"frames\":10,\"height\":66,\"misses\":2,\"rate\":5,"
              "\"rects\":[[0,0,130,66]],\"seq\":7,\"width\":130}");
    EXPECT_EQ(decoded.pixels,
              std::string(reinterpret_cast<const char*>(frame->rgba.data()), frame->rgba.size()));
}

TEST(FrameEncoding, AChangeCarriesOnlyItsRowsOfTheChangedTiles) {
    auto frame = patternFrame(300, 200, 3);
    const TileHashes before = *frame->tiles;
    paint(*frame, 200, 150, 0xEE);  // tile (3, 2): x 192..255, y 128..191
    const Decoded decoded = decode(encodeFrame(frame, &before, FrameCounters{}));
    ASSERT_EQ(decoded.header["rects"].size(), 1u);
    EXPECT_EQ(simjson::compact(decoded.header["rects"][0]), "[192,128,64,64]");
    ASSERT_EQ(decoded.pixels.size(), 64u * 64u * 4u);
    for (int32_t row = 0; row < 64; ++row) {
        const size_t from = ((128 + row) * 300 + 192) * 4;
        ASSERT_EQ(std::memcmp(decoded.pixels.data() + row * 256, frame->rgba.data() + from, 256), 0)
            << row;
    }
}

TEST(FrameEncoding, NoChangeSaysSoWithoutPixels) {
    auto frame = patternFrame(64, 64, 4);
    const TileHashes same = *frame->tiles;
    const Decoded unchanged = decode(encodeFrame(frame, &same, FrameCounters{}));
    EXPECT_EQ(unchanged.header["seq"], 4);
    EXPECT_EQ(unchanged.header["rects"].size(), 0u);
    EXPECT_TRUE(unchanged.pixels.empty());

    const Decoded none = decode(encodeNoChange(9, FrameCounters{3, 0, 3, 1}));
    EXPECT_EQ(simjson::compact(none.header),
              "{\"fills\":3,\"frames\":0,\"height\":0,\"misses\":3,\"rate\":1,\"rects\":[],"
              "\"seq\":9,\"width\":0}");
}

}  // namespace
}  // namespace agentsim::console
