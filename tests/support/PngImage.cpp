#include "PngImage.h"

#include <png.h>

#include <stdexcept>

namespace testing_support {

BgraImage readPng(const std::string& path) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&png, path.c_str()) == 0) {
        throw std::runtime_error("cannot read " + path + ": " + png.message);
    }
    png.format = PNG_FORMAT_BGRA;
    BgraImage image;
    image.width = static_cast<int32_t>(png.width);
    image.height = static_cast<int32_t>(png.height);
    image.pixels.resize(PNG_IMAGE_SIZE(png));
    if (png_image_finish_read(&png, nullptr, image.pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error("cannot decode " + path + ": " + png.message);
    }
    return image;
}

void writePng(const std::string& path, const BgraImage& image) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_BGRA;
    if (png_image_write_to_file(&png, path.c_str(), 0, image.pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error("cannot write " + path + ": " + png.message);
    }
}

}  // namespace testing_support
