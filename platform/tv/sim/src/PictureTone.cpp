#include "PictureTone.h"

#include <algorithm>

namespace tvsim {
namespace {

// How each picture mode looks, in thousandths (brightness in levels).
struct ModeLook {
    int32_t backlight;
    int32_t brightness;
    int32_t contrast;
    int32_t saturation;
};

constexpr ModeLook kModeLooks[] = {
    {1000, 6, 1180, 1350},   // Vivid
    {1000, 0, 1000, 1000},   // Standard
    {700, 0, 950, 900},      // Energy Saving: a dimmer backlight
    {860, -4, 1060, 950},    // Theater
    {1000, 8, 1080, 1100},   // Game
    {1000, 12, 1120, 1200},  // Sports
    {960, 0, 960, 920},      // Calibrated
};
constexpr int32_t kStandardMode = 1;

// Red, green and blue gains of each colour temperature, in thousandths: a cool picture loses
// red, a warm one loses blue.
constexpr std::array<int32_t, 3> kTemperatureGains[] = {
    {850, 950, 1000},    // High (cool)
    {1000, 1000, 1000},  // Medium
    {1000, 920, 780},    // Low (warm)
    {1000, 960, 890},    // Mid-Low
};
constexpr int32_t kMediumTemperature = 1;

int32_t percent(int32_t value) {
    return std::clamp(value, 0, 100);
}

template <typename Table>
int32_t indexIn(const Table& table, int32_t value, int32_t fallback) {
    const int32_t count = static_cast<int32_t>(std::size(table));
    return value >= 0 && value < count ? value : fallback;
}

uint8_t level(int64_t value) {
    return static_cast<uint8_t>(std::clamp<int64_t>(value, 0, 255));
}

}  // namespace

ToneMap::ToneMap(const PictureAdjustments& settings) {
    const ModeLook& look = kModeLooks[indexIn(kModeLooks, settings.mode, kStandardMode)];
    const std::array<int32_t, 3>& gains =
        kTemperatureGains[indexIn(kTemperatureGains, settings.temperature, kMediumTemperature)];
    // Brightness moves every level by up to 80 either way; contrast scales the distance from
    // mid-grey by 0.2 (at 0) to 1.8 (at 100); colour saturation 0 takes all colour away, 100
    // doubles it.
    const int32_t brightness = (percent(settings.brightness) - 50) * 8 / 5 + look.brightness;
    const int32_t contrast = 200 + percent(settings.contrast) * 16;
    saturation_ = percent(settings.saturation) * 20 * look.saturation * 256 / 1000000;
    for (size_t channel = 0; channel < curves_.size(); ++channel) {
        for (int32_t in = 0; in < 256; ++in) {
            const int64_t contrasted =
                int64_t{in - 128} * contrast * look.contrast / 1000000 + 128 + brightness;
            const int64_t lit = std::clamp<int64_t>(contrasted, 0, 255) * look.backlight / 1000;
            curves_[channel][in] = level(lit * gains[channel] / 1000);
        }
    }
}

Colour ToneMap::apply(Colour colour) const {
    int32_t red = colour.red;
    int32_t green = colour.green;
    int32_t blue = colour.blue;
    if (saturation_ != 256) {
        const int32_t grey = (77 * red + 150 * green + 29 * blue + 128) >> 8;
        red = std::clamp(grey + (red - grey) * saturation_ / 256, 0, 255);
        green = std::clamp(grey + (green - grey) * saturation_ / 256, 0, 255);
        blue = std::clamp(grey + (blue - grey) * saturation_ / 256, 0, 255);
    }
    return {curves_[0][red], curves_[1][green], curves_[2][blue]};
}

}  // namespace tvsim
