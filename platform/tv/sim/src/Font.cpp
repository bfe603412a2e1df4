#include "Font.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

namespace tvsim {
namespace {

constexpr int32_t kCellWidth = 5;
constexpr int32_t kCellHeight = Font::kCellHeight;
constexpr char kFirstCharacter = ' ';
constexpr char kLastCharacter = '~';
constexpr int32_t kSpaceAdvance = 3;

// Each glyph as nine rows of five cells ('#' ink), top to bottom, separated by blanks; rows 0 to
// 6 stand on the baseline, rows 7 and 8 hold the descenders.
// clang-format off
constexpr const char* kGlyphs[] = {
    /*   */ "..... ..... ..... ..... ..... ..... ..... ..... .....",
    /* ! */ "..#.. ..#.. ..#.. ..#.. ..#.. ..... ..#.. ..... .....",
    /* " */ ".#.#. .#.#. .#.#. ..... ..... ..... ..... ..... .....",
    /* # */ ".#.#. .#.#. ##### .#.#. ##### .#.#. .#.#. ..... .....",
    /* $ */ "..#.. .#### #.#.. .###. ..#.# ####. ..#.. ..... .....",
    /* % */ "##... ##..# ...#. ..#.. .#... #..## ...## ..... .....",
    /* & */ ".##.. #..#. #.#.. .#... #.#.# #..#. .##.# ..... .....",
    /* ' */ "..#.. ..#.. .#... ..... ..... ..... ..... ..... .....",
    /* ( */ "...#. ..#.. .#... .#... .#... ..#.. ...#. ..... .....",
    /* ) */ ".#... ..#.. ...#. ...#. ...#. ..#.. .#... ..... .....",
    /* * */ "..... ..#.. #.#.# .###. #.#.# ..#.. ..... ..... .....",
    /* + */ "..... ..#.. ..#.. ##### ..#.. ..#.. ..... ..... .....",
    /* , */ "..... ..... ..... ..... ..... .##.. .##.. ..#.. .#...",
    /* - */ "..... ..... ..... .###. ..... ..... ..... ..... .....",
    /* . */ "..... ..... ..... ..... ..... .##.. .##.. ..... .....",
    /* / */ "..... ....# ...#. ..#.. .#... #.... ..... ..... .....",
    /* 0 */ ".###. #...# #..## #.#.# ##..# #...# .###. ..... .....",
    /* 1 */ "..#.. .##.. ..#.. ..#.. ..#.. ..#.. .###. ..... .....",
    /* 2 */ ".###. #...# ....# ...#. ..#.. .#... ##### ..... .....",
    /* 3 */ "##### ...#. ..#.. ...#. ....# #...# .###. ..... .....",
    /* 4 */ "...#. ..##. .#.#. #..#. ##### ...#. ...#. ..... .....",
    /* 5 */ "##### #.... ####. ....# ....# #...# .###. ..... .....",
    /* 6 */ "..##. .#... #.... ####. #...# #...# .###. ..... .....",
    /* 7 */ "##### ....# ...#. ..#.. .#... .#... .#... ..... .....",
    /* 8 */ ".###. #...# #...# .###. #...# #...# .###. ..... .....",
    /* 9 */ ".###. #...# #...# .#### ....# ...#. .##.. ..... .....",
    /* : */ "..... .##.. .##.. ..... .##.. .##.. ..... ..... .....",
    /* ; */ "..... .##.. .##.. ..... .##.. .##.. ..#.. .#... .....",
    /* < */ "...#. ..#.. .#... #.... .#... ..#.. ...#. ..... .....",
    /* = */ "..... ..... ##### ..... ##### ..... ..... ..... .....",
    /* > */ ".#... ..#.. ...#. ....# ...#. ..#.. .#... ..... .....",
    /* ? */ ".###. #...# ....# ...#. ..#.. ..... ..#.. ..... .....",
    /* @ */ ".###. #...# ....# .##.# #.#.# #.#.# .###. ..... .....",
    /* A */ ".###. #...# #...# #...# ##### #...# #...# ..... .....",
    /* B */ "####. #...# #...# ####. #...# #...# ####. ..... .....",
    /* C */ ".###. #...# #.... #.... #.... #...# .###. ..... .....",
    /* D */ "###.. #..#. #...# #...# #...# #..#. ###.. ..... .....",
    /* E */ "##### #.... #.... ####. #.... #.... ##### ..... .....",
    /* F */ "##### #.... #.... ####. #.... #.... #.... ..... .....",
    /* G */ ".###. #...# #.... #.### #...# #...# .#### ..... .....",
    /* H */ "#...# #...# #...# ##### #...# #...# #...# ..... .....",
    /* I */ ".###. ..#.. ..#.. ..#.. ..#.. ..#.. .###. ..... .....",
    /* J */ "..### ...#. ...#. ...#. ...#. #..#. .##.. ..... .....",
    /* K */ "#...# #..#. #.#.. ##... #.#.. #..#. #...# ..... .....",
    /* L */ "#.... #.... #.... #.... #.... #.... ##### ..... .....",
    /* M */ "#...# ##.## #.#.# #.#.# #...# #...# #...# ..... .....",
    /* N */ "#...# #...# ##..# #.#.# #..## #...# #...# ..... .....",
    /* O */ ".###. #...# #...# #...# #...# #...# .###. ..... .....",
    /* P */ "####. #...# #...# ####. #.... #.... #.... ..... .....",
    /* Q */ ".###. #...# #...# #...# #.#.# #..#. .##.# ..... .....",
    /* R */ "####. #...# #...# ####. #.#.. #..#. #...# ..... .....",
    /* S */ ".#### #.... #.... .###. ....# ....# ####. ..... .....",
    /* T */ "##### ..#.. ..#.. ..#.. ..#.. ..#.. ..#.. ..... .....",
    /* U */ "#...# #...# #...# #...# #...# #...# .###. ..... .....",
    /* V */ "#...# #...# #...# #...# #...# .#.#. ..#.. ..... .....",
    /* W */ "#...# #...# #...# #.#.# #.#.# #.#.# .#.#. ..... .....",
    /* X */ "#...# #...# .#.#. ..#.. .#.#. #...# #...# ..... .....",
    /* Y */ "#...# #...# .#.#. ..#.. ..#.. ..#.. ..#.. ..... .....",
    /* Z */ "##### ....# ...#. ..#.. .#... #.... ##### ..... .....",
    /* [ */ ".###. .#... .#... .#... .#... .#... .###. ..... .....",
    /* \ */ "..... #.... .#... ..#.. ...#. ....# ..... ..... .....",
    /* ] */ ".###. ...#. ...#. ...#. ...#. ...#. .###. ..... .....",
    /* ^ */ "..#.. .#.#. #...# ..... ..... ..... ..... ..... .....",
    /* _ */ "..... ..... ..... ..... ..... ..... ##### ..... .....",
    /* ` */ ".#... ..#.. ...#. ..... ..... ..... ..... ..... .....",
    /* a */ "..... ..... .###. ....# .#### #...# .#### ..... .....",
    /* b */ "#.... #.... #.##. ##..# #...# #...# ####. ..... .....",
    /* c */ "..... ..... .###. #.... #.... #...# .###. ..... .....",
    /* d */ "....# ....# .##.# #..## #...# #...# .#### ..... .....",
    /* e */ "..... ..... .###. #...# ##### #.... .###. ..... .....",
    /* f */ "..##. .#..# .#... ###.. .#... .#... .#... ..... .....",
    /* g */ "..... ..... .#### #...# #...# #...# .#### ....# .###.",
    /* h */ "#.... #.... #.##. ##..# #...# #...# #...# ..... .....",
    /* i */ "..#.. ..... .##.. ..#.. ..#.. ..#.. .###. ..... .....",
    /* j */ "...#. ..... ..##. ...#. ...#. ...#. ...#. #..#. .##..",
    /* k */ "#.... #.... #..#. #.#.. ##... #.#.. #..#. ..... .....",
    /* l */ ".##.. ..#.. ..#.. ..#.. ..#.. ..#.. .###. ..... .....",
    /* m */ "..... ..... ##.#. #.#.# #.#.# #.#.# #.#.# ..... .....",
    /* n */ "..... ..... #.##. ##..# #...# #...# #...# ..... .....",
    /* o */ "..... ..... .###. #...# #...# #...# .###. ..... .....",
    /* p */ "..... ..... ####. #...# #...# #...# ####. #.... #....",
    /* q */ "..... ..... .#### #...# #...# #...# .#### ....# ....#",
    /* r */ "..... ..... #.##. ##..# #.... #.... #.... ..... .....",
    /* s */ "..... ..... .#### #.... .###. ....# ####. ..... .....",
    /* t */ ".#... .#... ###.. .#... .#... .#..# ..##. ..... .....",
    /* u */ "..... ..... #...# #...# #...# #..## .##.# ..... .....",
    /* v */ "..... ..... #...# #...# #...# .#.#. ..#.. ..... .....",
    /* w */ "..... ..... #...# #...# #.#.# #.#.# .#.#. ..... .....",
    /* x */ "..... ..... #...# .#.#. ..#.. .#.#. #...# ..... .....",
    /* y */ "..... ..... #...# #...# #...# #...# .#### ....# .###.",
    /* z */ "..... ..... ##### ...#. ..#.. .#... ##### ..... .....",
    /* { */ "...#. ..#.. ..#.. .#... ..#.. ..#.. ...#. ..... .....",
    /* | */ "..#.. ..#.. ..#.. ..#.. ..#.. ..#.. ..#.. ..... .....",
    /* } */ ".#... ..#.. ..#.. ...#. ..#.. ..#.. .#... ..... .....",
    /* ~ */ "..... ..... .#... #.#.# ...#. ..... ..... ..... .....",
    // What stands for a character the font does not have.
    /*   */ "..... ####. #..#. #..#. #..#. #..#. ####. ..... .....",
};
// clang-format on
constexpr size_t kGlyphCount = sizeof(kGlyphs) / sizeof(kGlyphs[0]);
constexpr size_t kBoxGlyph = kGlyphCount - 1;
static_assert(kBoxGlyph == static_cast<size_t>(kLastCharacter - kFirstCharacter + 1),
              "one glyph for each printable ASCII character, then the box");

// A glyph at scale 1, cut to its inked columns.
struct Bitmap {
    int32_t width = 0;
    std::array<std::array<bool, kCellWidth>, kCellHeight> ink{};

    bool at(int32_t x, int32_t y) const {
        return x >= 0 && y >= 0 && x < width && y < kCellHeight && ink[y][x];
    }
};

bool isDigit(size_t index) {
    return index >= static_cast<size_t>('0' - kFirstCharacter) &&
           index <= static_cast<size_t>('9' - kFirstCharacter);
}

// Letters keep only their inked columns, so that text is proportional; digits keep the whole
// cell, so that numbers line up.
Bitmap bitmapOf(size_t index) {
    std::array<std::array<bool, kCellWidth>, kCellHeight> cell{};
    int32_t first = kCellWidth;
    int32_t last = -1;
    for (int32_t y = 0; y < kCellHeight; ++y) {
        for (int32_t x = 0; x < kCellWidth; ++x) {
            cell[y][x] = kGlyphs[index][y * (kCellWidth + 1) + x] == '#';
            if (cell[y][x]) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
    }
    if (isDigit(index) || last < 0) {
        first = 0;
        last = kCellWidth - 1;
    }
    Bitmap bitmap;
    bitmap.width = last - first + 1;
    for (int32_t y = 0; y < kCellHeight; ++y) {
        for (int32_t x = first; x <= last; ++x) {
            bitmap.ink[y][x - first] = cell[y][x];
        }
    }
    return bitmap;
}

// Doubles the bitmap, smoothing its diagonal steps (the Scale2x rule).
std::vector<bool> smoothedDouble(const Bitmap& bitmap) {
    const int32_t width = bitmap.width * 2;
    std::vector<bool> doubled(static_cast<size_t>(width) * kCellHeight * 2);
    for (int32_t y = 0; y < kCellHeight; ++y) {
        for (int32_t x = 0; x < bitmap.width; ++x) {
            const bool p = bitmap.at(x, y);
            const bool a = bitmap.at(x, y - 1);
            const bool b = bitmap.at(x + 1, y);
            const bool c = bitmap.at(x - 1, y);
            const bool d = bitmap.at(x, y + 1);
            // Only ever adds ink (into the notch of a diagonal step), so that square corners
            // stay square.
            const bool quarters[4] = {
                p || (c == a && c != d && a != b && a),
                p || (a == b && a != c && b != d && b),
                p || (d == c && d != b && c != a && c),
                p || (b == d && b != a && d != c && d),
            };
            for (int32_t q = 0; q < 4; ++q) {
                doubled[static_cast<size_t>(2 * y + q / 2) * width + 2 * x + q % 2] = quarters[q];
            }
        }
    }
    return doubled;
}

// The smoothed glyph drawn at twice the target size and averaged down in 2 x 2 blocks.
GlyphMask maskOf(size_t index, int32_t scale) {
    const Bitmap bitmap = bitmapOf(index);
    const std::vector<bool> doubled = smoothedDouble(bitmap);
    const int32_t doubledWidth = bitmap.width * 2;
    GlyphMask mask;
    mask.width = bitmap.width * scale;
    mask.height = kCellHeight * scale;
    const bool blank = index == 0;
    mask.advance = (blank ? kSpaceAdvance : bitmap.width + 1) * scale;
    mask.coverage.resize(static_cast<size_t>(mask.width) * mask.height);
    for (int32_t y = 0; y < mask.height; ++y) {
        for (int32_t x = 0; x < mask.width; ++x) {
            int32_t inked = 0;
            for (int32_t sub = 0; sub < 4; ++sub) {
                const int32_t column = (2 * x + sub % 2) / scale;
                const int32_t row = (2 * y + sub / 2) / scale;
                inked += doubled[static_cast<size_t>(row) * doubledWidth + column] ? 1 : 0;
            }
            mask.coverage[static_cast<size_t>(y) * mask.width + x] =
                static_cast<uint8_t>(inked * 255 / 4);
        }
    }
    return mask;
}

}  // namespace

Font::Font(int32_t scale) : scale_(scale) {
    glyphs_.reserve(kGlyphCount);
    for (size_t index = 0; index < kGlyphCount; ++index) {
        glyphs_.push_back(maskOf(index, scale));
    }
}

const Font& Font::atScale(int32_t scale) {
    static std::mutex mutex;
    static std::map<int32_t, std::unique_ptr<const Font>>* const fonts =
        new std::map<int32_t, std::unique_ptr<const Font>>();
    scale = std::clamp(scale, 1, kLargestScale);
    std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<const Font>& font = (*fonts)[scale];
    if (!font) {
        font.reset(new Font(scale));
    }
    return *font;
}

const GlyphMask& Font::glyph(char character) const {
    if (character < kFirstCharacter || character > kLastCharacter) {
        return glyphs_[kBoxGlyph];
    }
    return glyphs_[static_cast<size_t>(character - kFirstCharacter)];
}

bool Font::startsCharacter(char character) {
    return (static_cast<unsigned char>(character) & 0xC0) != 0x80;
}

int32_t Font::textWidth(const std::string& text) const {
    int64_t width = 0;
    for (const char character : text) {
        if (startsCharacter(character)) {
            width += glyph(character).advance;
        }
    }
    // No text fits a screen anywhere near this wide; the limit only keeps the sum in range.
    return static_cast<int32_t>(std::min<int64_t>(width > 0 ? width - scale_ : 0, INT32_MAX / 2));
}

}  // namespace tvsim
