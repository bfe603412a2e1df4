#include "TestCard.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace tvsim {
namespace {

struct Rgb {
    uint8_t red;
    uint8_t green;
    uint8_t blue;
};

constexpr Rgb kBars[] = {{255, 255, 255}, {255, 255, 0}, {0, 255, 255}, {0, 255, 0},
                         {255, 0, 255},   {255, 0, 0},   {0, 0, 255},   {0, 0, 0}};
constexpr int32_t kBarCount = sizeof(kBars) / sizeof(kBars[0]);
constexpr Rgb kCaptionInk = {255, 255, 255};
constexpr Rgb kCaptionPaper = {0, 0, 0};
constexpr char kCaption[] = "NORVANE TV";

constexpr int32_t kGlyphWidth = 5;
constexpr int32_t kGlyphHeight = 7;

// Only the letters of the caption; rows top to bottom, the leftmost pixel in the highest bit.
struct Glyph {
    char letter;
    uint8_t rows[kGlyphHeight];
};

constexpr Glyph kFont[] = {
    {'A', {0b01110, 0b10001, 0b10001, 0b11111, 0b10001, 0b10001, 0b10001}},
    {'E', {0b11111, 0b10000, 0b10000, 0b11110, 0b10000, 0b10000, 0b11111}},
    {'N', {0b10001, 0b11001, 0b10101, 0b10011, 0b10001, 0b10001, 0b10001}},
    {'O', {0b01110, 0b10001, 0b10001, 0b10001, 0b10001, 0b10001, 0b01110}},
    {'R', {0b11110, 0b10001, 0b10001, 0b11110, 0b10100, 0b10010, 0b10001}},
    {'T', {0b11111, 0b00100, 0b00100, 0b00100, 0b00100, 0b00100, 0b00100}},
    {'V', {0b10001, 0b10001, 0b10001, 0b10001, 0b10001, 0b01010, 0b00100}},
};

const Glyph* glyphOf(char letter) {
    for (const Glyph& glyph : kFont) {
        if (glyph.letter == letter) {
            return &glyph;
        }
    }
    return nullptr;  // a blank
}

class Canvas {
public:
    Canvas(int32_t width, int32_t height)
        : width_(width), height_(height), pixels_(static_cast<size_t>(width) * height * 4) {}

    int32_t width() const { return width_; }
    int32_t height() const { return height_; }

    void put(int32_t x, int32_t y, Rgb colour) {
        uint8_t* pixel = &pixels_[(static_cast<size_t>(y) * width_ + x) * 4];
        pixel[0] = colour.blue;
        pixel[1] = colour.green;
        pixel[2] = colour.red;
        pixel[3] = 255;
    }

    // Clipped to the canvas.
    void fill(int32_t left, int32_t top, int32_t width, int32_t height, Rgb colour) {
        const int32_t right = std::min(width_, left + width);
        const int32_t bottom = std::min(height_, top + height);
        for (int32_t y = std::max(0, top); y < bottom; ++y) {
            for (int32_t x = std::max(0, left); x < right; ++x) {
                put(x, y, colour);
            }
        }
    }

    // Repeats row `source` over the rows [first, last).
    void repeatRow(int32_t source, int32_t first, int32_t last) {
        const size_t rowBytes = static_cast<size_t>(width_) * 4;
        for (int32_t y = first; y < last; ++y) {
            std::memcpy(&pixels_[y * rowBytes], &pixels_[source * rowBytes], rowBytes);
        }
    }

    Picture release() { return std::move(pixels_); }

private:
    int32_t width_;
    int32_t height_;
    Picture pixels_;
};

void drawBars(Canvas& canvas, int32_t rows) {
    if (rows == 0) {
        return;
    }
    for (int32_t x = 0; x < canvas.width(); ++x) {
        canvas.put(x, 0, kBars[static_cast<int64_t>(x) * kBarCount / canvas.width()]);
    }
    canvas.repeatRow(0, 1, rows);
}

void drawRamp(Canvas& canvas, int32_t top) {
    if (top >= canvas.height()) {
        return;
    }
    const int32_t span = std::max(1, canvas.width() - 1);
    for (int32_t x = 0; x < canvas.width(); ++x) {
        const auto grey = static_cast<uint8_t>(x * 255 / span);
        canvas.put(x, top, {grey, grey, grey});
    }
    canvas.repeatRow(top, top + 1, canvas.height());
}

// The caption on a dark box one glyph cell wider than the text all round, about half the
// picture wide.
void drawCaption(Canvas& canvas) {
    const std::string caption = kCaption;
    const int32_t cellsWide = static_cast<int32_t>(caption.size()) * (kGlyphWidth + 1) + 1;
    const int32_t cellsHigh = kGlyphHeight + 2;
    const int32_t scale =
        std::max(1, std::min(canvas.width() / (2 * cellsWide), canvas.height() / (4 * cellsHigh)));
    const int32_t left = (canvas.width() - cellsWide * scale) / 2;
    const int32_t top = (canvas.height() - cellsHigh * scale) / 2;
    canvas.fill(left, top, cellsWide * scale, cellsHigh * scale, kCaptionPaper);
    for (size_t i = 0; i < caption.size(); ++i) {
        const Glyph* glyph = glyphOf(caption[i]);
        if (glyph == nullptr) {
            continue;
        }
        const int32_t glyphLeft = left + (1 + static_cast<int32_t>(i) * (kGlyphWidth + 1)) * scale;
        for (int32_t row = 0; row < kGlyphHeight; ++row) {
            for (int32_t column = 0; column < kGlyphWidth; ++column) {
                if (glyph->rows[row] & (1 << (kGlyphWidth - 1 - column))) {
                    canvas.fill(glyphLeft + column * scale, top + (1 + row) * scale, scale, scale,
                                kCaptionInk);
                }
            }
        }
    }
}

}  // namespace

Picture renderTestCard(int32_t width, int32_t height) {
    Canvas canvas(width, height);
    const int32_t barRows = height * 2 / 3;
    drawBars(canvas, barRows);
    drawRamp(canvas, barRows);
    drawCaption(canvas);
    return canvas.release();
}

}  // namespace tvsim
