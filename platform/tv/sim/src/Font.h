// The TV's on-screen font: a built-in bitmap font of the printable ASCII characters, drawn at
// any whole-number scale with its diagonals smoothed and its edges lightly anti-aliased.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tvsim {

// One character's coverage at one scale: `width` x `height` values, 0 (paper) to 255 (ink), rows
// top to bottom. `advance` is how far the pen moves after it.
struct GlyphMask {
    int32_t width = 0;
    int32_t height = 0;
    int32_t advance = 0;
    std::vector<uint8_t> coverage;
};

class Font {
public:
    // Rows of one glyph cell at scale 1: seven above the baseline and two below it.
    static constexpr int32_t kCellHeight = 9;

    // Beyond this the glyphs are drawn no larger (it keeps the kept masks small).
    static constexpr int32_t kLargestScale = 48;

    // The masks at `scale` (1 to kLargestScale), made on first use and kept for the life of the
    // process.
    static const Font& atScale(int32_t scale);

    int32_t scale() const { return scale_; }
    int32_t lineHeight() const { return kCellHeight * scale_; }
    // The mask of a character; anything outside printable ASCII (including each byte of a
    // multi-byte UTF-8 sequence after the first) is drawn as a small box, once per character.
    const GlyphMask& glyph(char character) const;
    // Whether `character` starts a character (UTF-8 continuation bytes do not).
    static bool startsCharacter(char character);
    int32_t textWidth(const std::string& text) const;

private:
    explicit Font(int32_t scale);

    int32_t scale_;
    std::vector<GlyphMask> glyphs_;  // printable ASCII, then the box
};

}  // namespace tvsim
