// Draws what the screen shows: the source's picture through the picture settings, then the
// on-screen displays. The picture under the displays is kept until the source, the picture
// settings or the screen size change, so that a capture usually costs one copy and the displays;
// and the memory of pictures handed out is used again once their last holder lets them go.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "Canvas.h"
#include "ScreenView.h"

namespace tvsim {

class PicturePool;

class ScreenComposer {
public:
    ScreenComposer();
    ~ScreenComposer();
    ScreenComposer(const ScreenComposer&) = delete;
    ScreenComposer& operator=(const ScreenComposer&) = delete;

    // Raw B,G,R,A pixels of `width` x `height`; the same view and size give the same bytes.
    std::shared_ptr<const Picture> compose(const ScreenView& view, int32_t width, int32_t height);

private:
    struct Background {
        SourceView source;
        PictureAdjustments picture;
        bool standby;
        int32_t width;
        int32_t height;

        bool operator==(const Background& other) const {
            return source == other.source && picture == other.picture && standby == other.standby &&
                   width == other.width && height == other.height;
        }
    };

    std::shared_ptr<PicturePool> pool_;
    std::optional<Background> drawn_;
    std::shared_ptr<const Picture> background_;
};

}  // namespace tvsim
