// The copy of a raw screenshot into the agent's frame buffer, with the byte order the agent wants.
#pragma once

#include <cstddef>

namespace norvane {

// Screenshots and frames alike: four bytes a pixel.
constexpr size_t kBytesPerPixel = 4;

// Turns `count` B,G,R,A pixels at `from` into R,G,B,A at `to`: in place, or moved down, as `to`
// may lie below `from` and overlap it. Any alignment.
using PixelConversion = void (*)(unsigned char* to, const unsigned char* from, size_t count);

// One implementation of the pixel conversion built for this target.
struct PixelConverter {
    const char* name;
    PixelConversion convert;
    // Whether this CPU has the instructions the implementation uses.
    bool (*runsHere)();
};

// Every implementation built for this target, from the portable one to the fastest.
struct PixelConverterList {
    const PixelConverter* first;
    size_t count;
    const PixelConverter* begin() const { return first; }
    const PixelConverter* end() const { return first + count; }
};
PixelConverterList pixelConverters();

// The fastest implementation this CPU runs, chosen on first use.
PixelConversion chosenPixelConversion();

// Copies the complete B,G,R,A pixels of the open screenshot `file`, at most `framePixels`, into
// `buffer` as R,G,B,A, on the calling thread alone. Returns how many pixels from the start were
// converted: fewer than the file held when the TV shortens it meanwhile, and then up to a cache
// line past them may hold unconverted bytes. Nothing past the frame is written.
size_t convertScreenshot(int file, size_t framePixels, unsigned char* buffer);

}  // namespace norvane
