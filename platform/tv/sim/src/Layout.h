// Positions and sizes on a screen of any size, given as they are on a 1920 x 1080 screen.
#pragma once

#include <algorithm>
#include <cstdint>

#include "Canvas.h"
#include "Font.h"

namespace tvsim {

class Layout {
public:
    static constexpr int32_t kDesignWidth = 1920;
    static constexpr int32_t kDesignHeight = 1080;

    Layout(int32_t width, int32_t height) : width_(width), height_(height) {
        // The smaller of the two ratios, so that everything laid out fits on both axes.
        if (int64_t{width} * kDesignHeight <= int64_t{height} * kDesignWidth) {
            numerator_ = width;
            denominator_ = kDesignWidth;
        } else {
            numerator_ = height;
            denominator_ = kDesignHeight;
        }
    }

    int32_t width() const { return width_; }
    int32_t height() const { return height_; }

    // A length, kept in proportion on both axes.
    int32_t size(int32_t design) const {
        return static_cast<int32_t>((int64_t{design} * numerator_ + denominator_ / 2) /
                                    denominator_);
    }
    // Coordinates that stretch with the screen's own width and height.
    int32_t x(int32_t design) const {
        return static_cast<int32_t>(int64_t{design} * width_ / kDesignWidth);
    }
    int32_t y(int32_t design) const {
        return static_cast<int32_t>(int64_t{design} * height_ / kDesignHeight);
    }
    Rect stretched(int32_t left, int32_t top, int32_t width, int32_t height) const {
        return {x(left), y(top), x(left + width) - x(left), y(top + height) - y(top)};
    }
    Point point(int32_t designX, int32_t designY) const { return {x(designX), y(designY)}; }
    // The font whose glyph cells are `designScale` pixels to a cell on a 1080-line screen;
    // rounded down on other screens, so that text stays within what is laid out for it.
    const Font& font(int32_t designScale) const {
        return Font::atScale(
            std::max(1, static_cast<int32_t>(int64_t{designScale} * numerator_ / denominator_)));
    }

private:
    int32_t width_;
    int32_t height_;
    int64_t numerator_ = 1;
    int64_t denominator_ = 1;
};

}  // namespace tvsim
