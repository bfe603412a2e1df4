// PNG files of raw B,G,R,A pictures, for tests that keep whole pictures as golden files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace testing_support {

struct BgraImage {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> pixels;  // B,G,R,A, rows top to bottom
};

// Throws std::runtime_error when the file cannot be read or decoded.
BgraImage readPng(const std::string& path);
// Throws std::runtime_error when the file cannot be written.
void writePng(const std::string& path, const BgraImage& image);

}  // namespace testing_support
