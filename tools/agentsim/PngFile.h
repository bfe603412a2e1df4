// Writes RGBA pixels as a PNG file.
#pragma once

#include <cstdint>
#include <string>

namespace agentsim {

// `pixels` holds width*height RGBA pixels, rows top to bottom. Throws std::runtime_error.
void writePng(const std::string& path, int32_t width, int32_t height, const unsigned char* pixels);

}  // namespace agentsim
