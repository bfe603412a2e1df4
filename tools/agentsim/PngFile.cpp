#include "PngFile.h"

#include <png.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace agentsim {

void writePng(const std::string& path, int32_t width, int32_t height, const unsigned char* pixels) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"),
                                                         std::fclose);
    if (!file) {
        throw std::runtime_error("agentsim: cannot write " + path);
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        throw std::runtime_error("agentsim: cannot encode " + path);
    }
    png_init_io(png, file.get());
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const size_t stride = static_cast<size_t>(width) * 4;
    for (int32_t row = 0; row < height; ++row) {
        png_write_row(png, pixels + stride * static_cast<size_t>(row));
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
}

}  // namespace agentsim
