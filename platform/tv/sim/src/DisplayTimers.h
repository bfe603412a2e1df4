// Which of the TV's passing on-screen displays are up, and until when: each is shown for a few
// seconds of simulated time and then gone. A new banner or notice replaces the one before.
#pragma once

#include <cstdint>
#include <optional>

namespace tvsim {

// Simulated monotonic time, in nanoseconds.
using SimulatedTime = int64_t;
constexpr SimulatedTime kSecond = 1000000000;

enum class BannerKind { Channel, Source, Info, PictureMode, SoundMode };
enum class NoticeKind { EngineerConnected, SessionEnded };

class DisplayTimers {
public:
    static constexpr SimulatedTime kVolumeTime = 3 * kSecond;
    static constexpr SimulatedTime kNoticeTime = 6 * kSecond;
    // The longest any display stays.
    static constexpr SimulatedTime kLongestTime = 6 * kSecond;
    static SimulatedTime timeOf(BannerKind kind);

    void showBanner(BannerKind kind, SimulatedTime now);
    void showVolume(SimulatedTime now);
    void showNotice(NoticeKind kind, SimulatedTime now);
    void hideBanner() { banner_.reset(); }
    void hideAll();

    std::optional<BannerKind> banner(SimulatedTime now) const;
    bool volumeShown(SimulatedTime now) const;
    std::optional<NoticeKind> notice(SimulatedTime now) const;

private:
    template <typename Kind>
    struct Shown {
        Kind kind;
        SimulatedTime until;
    };

    template <typename Kind>
    static std::optional<Kind> current(const std::optional<Shown<Kind>>& shown, SimulatedTime now) {
        if (shown && now < shown->until) {
            return shown->kind;
        }
        return std::nullopt;
    }

    std::optional<Shown<BannerKind>> banner_;
    std::optional<SimulatedTime> volumeUntil_;
    std::optional<Shown<NoticeKind>> notice_;
};

}  // namespace tvsim
