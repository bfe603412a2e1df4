// The TV's screen as a capture sees it: its size, whether capture works, and the picture of what
// the TV shows.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>

#include "ScreenComposer.h"
#include "ScreenView.h"

namespace tvsim {

constexpr int32_t kDefaultScreenWidth = 1920;
constexpr int32_t kDefaultScreenHeight = 1080;
constexpr int32_t kLargestScreenSide = 8192;

class Screen {
public:
    // Throws std::invalid_argument unless both sides lie in 1..kLargestScreenSide.
    void setSize(int32_t width, int32_t height);
    int32_t width() const;
    int32_t height() const;
    void setCaptureEnabled(bool enabled);
    // The picture of `view` a capture takes now, or null while capture is off.
    std::shared_ptr<const Picture> capture(const ScreenView& view);
    // Default size, capture on.
    void reset();

private:
    mutable std::mutex mutex_;
    int32_t width_ = kDefaultScreenWidth;
    int32_t height_ = kDefaultScreenHeight;
    bool captureEnabled_ = true;
    ScreenComposer composer_;
};

}  // namespace tvsim
