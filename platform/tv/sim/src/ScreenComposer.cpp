#include "ScreenComposer.h"

#include "OnScreenDisplay.h"
#include "SourceScenes.h"

namespace tvsim {
namespace {

bool hasDisplays(const ScreenView& view) {
    return !view.standby && (view.source.kind == SourceView::Kind::NoSignal || view.banner ||
                             view.volume || view.menu || view.dialog || view.notice || view.badge);
}

}  // namespace

Picture ScreenComposer::reclaimed(std::shared_ptr<Picture>& picture) {
    // Only this composer hands out copies of the pointer, under its caller's lock, so a count
    // of one cannot grow meanwhile.
    if (picture && picture.use_count() == 1) {
        return std::move(*picture);
    }
    return Picture();
}

std::shared_ptr<const Picture> ScreenComposer::compose(const ScreenView& view, int32_t width,
                                                       int32_t height) {
    const Background wanted = {view.source, view.picture, view.standby, width, height};
    if (!drawn_ || !(*drawn_ == wanted)) {
        Canvas canvas(width, height, reclaimed(background_));
        if (!view.standby) {
            const ToneMap tone(view.picture);
            canvas.setTone(&tone);
            drawSourcePicture(canvas, view.source);
        }
        background_ = std::make_shared<Picture>(canvas.release());
        drawn_ = wanted;
    }
    if (!hasDisplays(view)) {
        return background_;
    }
    Canvas canvas(width, height, *background_, reclaimed(frame_));
    drawOnScreenDisplays(canvas, view);
    frame_ = std::make_shared<Picture>(canvas.release());
    return frame_;
}

}  // namespace tvsim
