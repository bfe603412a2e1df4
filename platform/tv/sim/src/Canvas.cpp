#include "Canvas.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "PictureTone.h"

namespace tvsim {
namespace {

constexpr size_t kPixelBytes = 4;

// (value / 255), rounded, for value up to 255 * 255 + 255.
uint8_t divideBy255(uint32_t value) {
    value += 128;
    return static_cast<uint8_t>((value + (value >> 8)) >> 8);
}

// The colour `step` steps of `steps` along the way from `from` to `to`.
Colour mixed(Colour from, Colour to, int32_t step, int32_t steps) {
    const int32_t span = std::max(1, steps - 1);
    const auto mix = [step, span](uint8_t start, uint8_t end) {
        return static_cast<uint8_t>(start + (int32_t{end} - start) * step / span);
    };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

void blendPixel(uint8_t* pixel, Colour colour, Alpha alpha) {
    const uint32_t keep = 255u - alpha;
    pixel[0] = divideBy255(pixel[0] * keep + colour.blue * uint32_t{alpha});
    pixel[1] = divideBy255(pixel[1] * keep + colour.green * uint32_t{alpha});
    pixel[2] = divideBy255(pixel[2] * keep + colour.red * uint32_t{alpha});
}

// `colour` over `count` pixels. The bulk goes in blocks of four pixels treated byte by byte
// alike (alpha too, which stays 255), a shape compilers turn into vector instructions.
void blendPixels(uint8_t* start, size_t count, Colour colour, Alpha alpha) {
    constexpr size_t kBlock = 4 * kPixelBytes;
    const auto keep = static_cast<uint16_t>(255u - alpha);
    const uint8_t bytes[kPixelBytes] = {colour.blue, colour.green, colour.red, 255};
    uint16_t added[kBlock];
    for (size_t i = 0; i < kBlock; ++i) {
        added[i] = static_cast<uint16_t>(bytes[i % kPixelBytes] * alpha + 128);
    }
    const size_t blocked = count * kPixelBytes / kBlock * kBlock;
    for (size_t offset = 0; offset < blocked; offset += kBlock) {
        uint8_t block[kBlock];
        std::memcpy(block, start + offset, kBlock);
        for (size_t i = 0; i < kBlock; ++i) {
            const auto value = static_cast<uint16_t>(block[i] * keep + added[i]);
            block[i] = static_cast<uint8_t>((value + (value >> 8)) >> 8);
        }
        std::memcpy(start + offset, block, kBlock);
    }
    for (size_t offset = blocked; offset < count * kPixelBytes; offset += kPixelBytes) {
        blendPixel(start + offset, colour, alpha);
    }
}

// The x where the edge from `from` to `to` crosses the middle of row y (from.y <= y < to.y).
int32_t edgeCrossing(Point from, Point to, int32_t y) {
    const int64_t rise = to.y - from.y;
    const int64_t offset = (2 * int64_t{y} + 1 - 2 * int64_t{from.y}) * (to.x - from.x);
    return static_cast<int32_t>(from.x + offset / (2 * rise));
}

}  // namespace

int64_t integerSquareRoot(int64_t value) {
    if (value <= 0) {
        return 0;
    }
    int64_t root = 0;
    int64_t bit = int64_t{1} << 62;
    while (bit > value) {
        bit >>= 2;
    }
    while (bit != 0) {
        if (value >= root + bit) {
            value -= root + bit;
            root = (root >> 1) + bit;
        } else {
            root >>= 1;
        }
        bit >>= 2;
    }
    return root;
}

Canvas::Canvas(int32_t width, int32_t height, Picture storage)
    : width_(width), height_(height), pixels_(std::move(storage)) {
    if (width <= 0 || height <= 0) {
        throw std::invalid_argument("a canvas needs a positive size");
    }
    pixels_.resize(static_cast<size_t>(width) * height * kPixelBytes);
    fill({0, 0, width, height}, Colour{});
}

Canvas::Canvas(int32_t width, int32_t height, const Picture& picture, Picture storage)
    : width_(width), height_(height), pixels_(std::move(storage)) {
    if (width <= 0 || height <= 0 ||
        picture.size() != static_cast<size_t>(width) * height * kPixelBytes) {
        throw std::invalid_argument("the picture does not have the canvas size");
    }
    pixels_.assign(picture.begin(), picture.end());
}

Colour Canvas::toned(Colour colour) const {
    return tone_ != nullptr ? tone_->apply(colour) : colour;
}

void Canvas::fillSpan(int32_t y, int32_t first, int32_t last, Colour colour, Alpha alpha) {
    first = std::max(first, 0);
    last = std::min(last, width_);
    if (y < 0 || y >= height_ || first >= last || alpha == 0) {
        return;
    }
    colour = toned(colour);
    uint8_t* start = pixelAt(first, y);
    const size_t count = static_cast<size_t>(last - first);
    if (alpha != kOpaque) {
        blendPixels(start, count, colour, alpha);
        return;
    }
    // One pixel, then the filled part copied onto the rest, doubling each time.
    const uint8_t pixel[kPixelBytes] = {colour.blue, colour.green, colour.red, 255};
    std::memcpy(start, pixel, kPixelBytes);
    size_t done = 1;
    while (done < count) {
        const size_t step = std::min(done, count - done);
        std::memcpy(start + done * kPixelBytes, start, step * kPixelBytes);
        done += step;
    }
}

void Canvas::fill(const Rect& area, Colour colour, Alpha alpha) {
    const int32_t top = std::max(area.top, 0);
    const int32_t bottom = std::min(area.bottom(), height_);
    for (int32_t y = top; y < bottom; ++y) {
        fillSpan(y, area.left, area.right(), colour, alpha);
    }
}

void Canvas::fillRounded(const Rect& area, int32_t radius, Colour colour, Alpha alpha) {
    radius = std::max(0, std::min({radius, area.width / 2, area.height / 2}));
    const int32_t top = std::max(area.top, 0);
    const int32_t bottom = std::min(area.bottom(), height_);
    for (int32_t y = top; y < bottom; ++y) {
        const int32_t fromEdge = std::min(y - area.top, area.bottom() - 1 - y);
        int32_t inset = 0;
        if (fromEdge < radius) {
            // Half-pixel units: the row's middle against the corner circle's centre.
            const int64_t rise = 2 * int64_t{radius - fromEdge} - 1;
            inset = radius - static_cast<int32_t>(
                                 integerSquareRoot(4 * int64_t{radius} * radius - rise * rise) / 2);
        }
        fillSpan(y, area.left + inset, area.right() - inset, colour, alpha);
    }
}

void Canvas::verticalGradient(const Rect& area, Colour top, Colour bottom) {
    const int32_t first = std::max(area.top, 0);
    const int32_t last = std::min(area.bottom(), height_);
    for (int32_t y = first; y < last; ++y) {
        fillSpan(y, area.left, area.right(), mixed(top, bottom, y - area.top, area.height),
                 kOpaque);
    }
}

void Canvas::horizontalGradient(const Rect& area, Colour left, Colour right) {
    const int32_t first = std::max(area.left, 0);
    const int32_t last = std::min(area.right(), width_);
    const int32_t top = std::max(area.top, 0);
    const int32_t bottom = std::min(area.bottom(), height_);
    if (first >= last || top >= bottom) {
        return;
    }
    for (int32_t x = first; x < last; ++x) {
        fillSpan(top, x, x + 1, mixed(left, right, x - area.left, area.width), kOpaque);
    }
    const size_t rowBytes = static_cast<size_t>(last - first) * kPixelBytes;
    for (int32_t y = top + 1; y < bottom; ++y) {
        std::memcpy(pixelAt(first, y), pixelAt(first, top), rowBytes);
    }
}

void Canvas::fillDisc(Point centre, int32_t radius, Colour colour, Alpha alpha) {
    fillRing(centre, radius, 0, colour, alpha);
}

void Canvas::fillRing(Point centre, int32_t outer, int32_t inner, Colour colour, Alpha alpha) {
    if (outer <= 0) {
        return;
    }
    // Half the chord of a circle through the middle of row y; 0 where the row misses it.
    const auto halfChord = [&centre](int32_t radius, int32_t y) {
        const int64_t rise = 2 * (int64_t{y} - centre.y) + 1;  // half-pixel units
        const int64_t square = 4 * int64_t{radius} * radius - rise * rise;
        return static_cast<int32_t>(integerSquareRoot(square) / 2);
    };
    const int32_t first = std::max(centre.y - outer, 0);
    const int32_t last = std::min(centre.y + outer, height_);
    for (int32_t y = first; y < last; ++y) {
        const int32_t outside = halfChord(outer, y);
        const int32_t inside = inner > 0 ? halfChord(inner, y) : 0;
        if (inside == 0) {
            fillSpan(y, centre.x - outside, centre.x + outside, colour, alpha);
        } else {
            fillSpan(y, centre.x - outside, centre.x - inside, colour, alpha);
            fillSpan(y, centre.x + inside, centre.x + outside, colour, alpha);
        }
    }
}

void Canvas::fillTriangle(Point a, Point b, Point c, Colour colour, Alpha alpha) {
    Point corners[3] = {a, b, c};
    std::sort(std::begin(corners), std::end(corners),
              [](const Point& p, const Point& q) { return p.y < q.y; });
    const auto [top, middle, bottom] = corners;
    if (top.y == bottom.y) {
        return;
    }
    const int32_t first = std::max(top.y, 0);
    const int32_t last = std::min(bottom.y, height_);
    for (int32_t y = first; y < last; ++y) {
        const int32_t along = edgeCrossing(top, bottom, y);
        const int32_t other =
            y < middle.y ? edgeCrossing(top, middle, y) : edgeCrossing(middle, bottom, y);
        fillSpan(y, std::min(along, other), std::max(along, other), colour, alpha);
    }
}

void Canvas::drawGlyph(int32_t left, int32_t top, const GlyphMask& glyph, Colour colour,
                       Alpha alpha) {
    const int32_t firstRow = std::max(0, -top);
    const int32_t lastRow = std::min(glyph.height, height_ - top);
    const int32_t firstColumn = std::max(0, -left);
    const int32_t lastColumn = std::min(glyph.width, width_ - left);
    colour = toned(colour);
    for (int32_t row = firstRow; row < lastRow; ++row) {
        const uint8_t* coverage = &glyph.coverage[static_cast<size_t>(row) * glyph.width];
        for (int32_t column = firstColumn; column < lastColumn; ++column) {
            const uint32_t ink = coverage[column];
            if (ink == 0) {
                continue;
            }
            uint8_t* pixel = pixelAt(left + column, top + row);
            if (ink == 255 && alpha == kOpaque) {
                pixel[0] = colour.blue;
                pixel[1] = colour.green;
                pixel[2] = colour.red;
            } else {
                blendPixel(pixel, colour, divideBy255(ink * alpha));
            }
        }
    }
}

int32_t Canvas::drawText(int32_t left, int32_t top, const std::string& text, const Font& font,
                         Colour colour, Alpha alpha) {
    int32_t pen = left;
    for (const char character : text) {
        if (!Font::startsCharacter(character)) {
            continue;
        }
        if (pen >= width_) {
            break;
        }
        const GlyphMask& glyph = font.glyph(character);
        drawGlyph(pen, top, glyph, colour, alpha);
        pen += glyph.advance;
    }
    return font.textWidth(text);
}

}  // namespace tvsim
