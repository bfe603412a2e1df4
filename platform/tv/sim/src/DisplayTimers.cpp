#include "DisplayTimers.h"

namespace tvsim {

SimulatedTime DisplayTimers::timeOf(BannerKind kind) {
    switch (kind) {
        case BannerKind::Channel:
        case BannerKind::Source:
            return 4 * kSecond;
        case BannerKind::Info:
            return 6 * kSecond;
        case BannerKind::PictureMode:
        case BannerKind::SoundMode:
            break;
    }
    return 3 * kSecond;
}

void DisplayTimers::showBanner(BannerKind kind, SimulatedTime now) {
    banner_ = Shown<BannerKind>{kind, now + timeOf(kind)};
}

void DisplayTimers::showVolume(SimulatedTime now) {
    volumeUntil_ = now + kVolumeTime;
}

void DisplayTimers::showNotice(NoticeKind kind, SimulatedTime now) {
    notice_ = Shown<NoticeKind>{kind, now + kNoticeTime};
}

void DisplayTimers::hideAll() {
    banner_.reset();
    volumeUntil_.reset();
    notice_.reset();
}

std::optional<BannerKind> DisplayTimers::banner(SimulatedTime now) const {
    return current(banner_, now);
}

bool DisplayTimers::volumeShown(SimulatedTime now) const {
    return volumeUntil_ && now < *volumeUntil_;
}

std::optional<NoticeKind> DisplayTimers::notice(SimulatedTime now) const {
    return current(notice_, now);
}

}  // namespace tvsim
