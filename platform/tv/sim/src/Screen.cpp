#include "Screen.h"

#include <stdexcept>
#include <string>

namespace tvsim {

void Screen::setSize(int32_t width, int32_t height) {
    const auto valid = [](int32_t side) { return side >= 1 && side <= kLargestScreenSide; };
    if (!valid(width) || !valid(height)) {
        throw std::invalid_argument("screen size " + std::to_string(width) + "x" +
                                    std::to_string(height) + " out of range");
    }
    std::lock_guard<std::mutex> lock(mutex_);
    width_ = width;
    height_ = height;
}

int32_t Screen::width() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return width_;
}

int32_t Screen::height() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return height_;
}

void Screen::setCaptureEnabled(bool enabled) {
    std::lock_guard<std::mutex> lock(mutex_);
    captureEnabled_ = enabled;
}

std::shared_ptr<const Picture> Screen::capture(const ScreenView& view) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!captureEnabled_) {
        return nullptr;
    }
    return composer_.compose(view, width_, height_);
}

void Screen::reset() {
    std::lock_guard<std::mutex> lock(mutex_);
    width_ = kDefaultScreenWidth;
    height_ = kDefaultScreenHeight;
    captureEnabled_ = true;
}

}  // namespace tvsim
