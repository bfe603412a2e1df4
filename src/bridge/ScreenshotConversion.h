// The copy of a raw screenshot into the agent's frame buffer, with the byte order the agent wants.
#pragma once

#include <cstddef>

namespace norvane {

// Screenshots and frames alike: four bytes a pixel.
constexpr size_t kBytesPerPixel = 4;

// Copies the complete B,G,R,A pixels of the open screenshot `file`, at most `framePixels`, into
// `buffer` as R,G,B,A, sharing the work with a helper thread. Bytes past the last complete pixel
// are left as they were. Returns how many pixels from the start were converted: fewer than the
// file held when the TV shortens it meanwhile.
size_t convertScreenshot(int file, size_t framePixels, unsigned char* buffer);

// Held from the moment a frame of `framePixels` is asked for until it is converted or given up:
// the helper thread wakes meanwhile, so that its wake-up overlaps the caller's work before the
// copy rather than delaying the copy.
class ConversionStandby {
public:
    explicit ConversionStandby(size_t framePixels);
    ~ConversionStandby();
    ConversionStandby(const ConversionStandby&) = delete;
    ConversionStandby& operator=(const ConversionStandby&) = delete;

private:
    const bool standing_;
};

}  // namespace norvane
