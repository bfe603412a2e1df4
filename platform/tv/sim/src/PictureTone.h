// The TV's picture processing: what its picture settings do to the colours of the picture (not
// to its on-screen displays, which are drawn after it).
#pragma once

#include <array>
#include <cstdint>

#include "Canvas.h"

namespace tvsim {

// The picture settings as the TV stores them; values out of range count as the nearest one in
// range, unknown picture modes and colour temperatures as the standard ones.
struct PictureAdjustments {
    int32_t mode = 1;         // 0 Vivid ... 6 Calibrated
    int32_t brightness = 50;  // 0 to 100
    int32_t contrast = 50;    // 0 to 100
    int32_t saturation = 50;  // 0 (grey) to 100
    int32_t temperature = 1;  // 0 High (cool), 1 Medium, 2 Low (warm), 3 Mid-Low

    bool operator==(const PictureAdjustments& other) const {
        return mode == other.mode && brightness == other.brightness && contrast == other.contrast &&
               saturation == other.saturation && temperature == other.temperature;
    }
    bool operator!=(const PictureAdjustments& other) const { return !(*this == other); }
};

// Maps each colour of the picture through the settings: saturation first (around the colour's
// own grey), then brightness, contrast, the picture mode's backlight and the colour temperature.
class ToneMap {
public:
    explicit ToneMap(const PictureAdjustments& settings);

    Colour apply(Colour colour) const;

private:
    int32_t saturation_;                              // 256 leaves colours as they are
    std::array<std::array<uint8_t, 256>, 3> curves_;  // red, green, blue
};

}  // namespace tvsim
