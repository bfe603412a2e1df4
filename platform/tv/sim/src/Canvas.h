// A picture being drawn: B,G,R,A pixels (alpha always 255), rows top to bottom, with the few
// drawing operations the TV's screen is made of. Every operation is clipped to the canvas, so
// shapes may lie partly or wholly outside it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Font.h"

namespace tvsim {

using Picture = std::vector<uint8_t>;

struct Colour {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;

    bool operator==(const Colour& other) const {
        return red == other.red && green == other.green && blue == other.blue;
    }
    bool operator!=(const Colour& other) const { return !(*this == other); }
};

class ToneMap;

// Opacity from 0 (nothing drawn) to 255 (covers what is below).
using Alpha = uint8_t;
constexpr Alpha kOpaque = 255;

struct Rect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    int32_t right() const { return left + width; }
    int32_t bottom() const { return top + height; }
};

struct Point {
    int32_t x = 0;
    int32_t y = 0;
};

class Canvas {
public:
    // Black. Throws std::invalid_argument unless both sides are positive. Drawn in the memory
    // of `storage` when that is large enough (which saves the cost of fresh memory).
    Canvas(int32_t width, int32_t height, Picture storage = {});
    // A copy of `picture`, which has this size, drawn in the memory of `storage`.
    Canvas(int32_t width, int32_t height, const Picture& picture, Picture storage);

    int32_t width() const { return width_; }
    int32_t height() const { return height_; }
    const Picture& pixels() const { return pixels_; }
    Picture release() { return std::move(pixels_); }

    // Every colour drawn from now on goes through `tone` first (none when null); the tone must
    // outlive its use.
    void setTone(const ToneMap* tone) { tone_ = tone; }

    void fill(const Rect& area, Colour colour, Alpha alpha = kOpaque);
    void fillRounded(const Rect& area, int32_t radius, Colour colour, Alpha alpha = kOpaque);
    // Each row one colour, from `top` in the first row to `bottom` in the last.
    void verticalGradient(const Rect& area, Colour top, Colour bottom);
    // Each column one colour, from `left` in the first column to `right` in the last.
    void horizontalGradient(const Rect& area, Colour left, Colour right);
    void fillDisc(Point centre, int32_t radius, Colour colour, Alpha alpha = kOpaque);
    // The band between two circles around one centre.
    void fillRing(Point centre, int32_t outer, int32_t inner, Colour colour, Alpha alpha = kOpaque);
    void fillTriangle(Point a, Point b, Point c, Colour colour, Alpha alpha = kOpaque);
    // Text from its top-left corner in the given font; returns its width.
    int32_t drawText(int32_t left, int32_t top, const std::string& text, const Font& font,
                     Colour colour, Alpha alpha = kOpaque);

private:
    // Row `y` from column `first` to column `last` (exclusive), clipped.
    void fillSpan(int32_t y, int32_t first, int32_t last, Colour colour, Alpha alpha);
    void drawGlyph(int32_t left, int32_t top, const GlyphMask& glyph, Colour colour, Alpha alpha);
    uint8_t* pixelAt(int32_t x, int32_t y) {
        return &pixels_[(static_cast<size_t>(y) * width_ + x) * 4];
    }

    Colour toned(Colour colour) const;

    int32_t width_;
    int32_t height_;
    Picture pixels_;
    const ToneMap* tone_ = nullptr;
};

// The whole-number square root, rounded down (0 for negative numbers).
int64_t integerSquareRoot(int64_t value);

}  // namespace tvsim
