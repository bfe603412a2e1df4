#include "ScreenComposer.h"

#include <mutex>
#include <utility>
#include <vector>

#include "OnScreenDisplay.h"
#include "SourceScenes.h"

namespace tvsim {

// Picture memory given back by the last holder of a picture, for the next one: fresh memory
// costs a page fault for every few kilobytes.
class PicturePool : public std::enable_shared_from_this<PicturePool> {
public:
    // Memory of a picture let go, or none.
    Picture take() {
        std::lock_guard<std::mutex> lock(mutex_);
        if (spare_.empty()) {
            return Picture();
        }
        Picture picture = std::move(spare_.back());
        spare_.pop_back();
        return picture;
    }

    // Hands the picture out; its memory comes back here when its last holder lets it go.
    std::shared_ptr<const Picture> share(Picture picture) {
        std::shared_ptr<PicturePool> pool = shared_from_this();
        Picture* shared = new Picture(std::move(picture));
        return std::shared_ptr<const Picture>(shared, [pool, shared](const Picture*) {
            pool->giveBack(std::move(*shared));
            delete shared;
        });
    }

private:
    // Two are enough: the picture under the displays and the one being written out.
    static constexpr size_t kSpares = 2;

    void giveBack(Picture picture) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (spare_.size() < kSpares) {
            spare_.push_back(std::move(picture));
        }
    }

    std::mutex mutex_;
    std::vector<Picture> spare_;
};

namespace {

bool hasDisplays(const ScreenView& view) {
    return !view.standby && (view.source.kind == SourceView::Kind::NoSignal || view.banner ||
                             view.volume || view.menu || view.dialog || view.notice || view.badge);
}

}  // namespace

ScreenComposer::ScreenComposer() : pool_(std::make_shared<PicturePool>()) {}

ScreenComposer::~ScreenComposer() = default;

std::shared_ptr<const Picture> ScreenComposer::compose(const ScreenView& view, int32_t width,
                                                       int32_t height) {
    const Background wanted = {view.source, view.picture, view.standby, width, height};
    if (!drawn_ || !(*drawn_ == wanted)) {
        background_.reset();
        Canvas canvas(width, height, pool_->take());
        if (!view.standby) {
            const ToneMap tone(view.picture);
            canvas.setTone(&tone);
            drawSourcePicture(canvas, view.source);
        }
        background_ = pool_->share(canvas.release());
        drawn_ = wanted;
    }
    if (!hasDisplays(view)) {
        return background_;
    }
    Canvas canvas(width, height, *background_, pool_->take());
    drawOnScreenDisplays(canvas, view);
    return pool_->share(canvas.release());
}

}  // namespace tvsim
