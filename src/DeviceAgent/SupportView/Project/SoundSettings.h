// The TV's main sound settings as the sound diagnose tool reads and writes them: always all six
// at once, one whole read or one whole write at a time.
#pragma once

#include <cstdint>
#include <string>

#include "zel/core/Mutex.h"

namespace norvane {
namespace Sv {

struct SoundSettingsRecord {
    int32_t volume = 0;
    std::string mute = "Unmute";
    std::string soundMode = "Standard";
    std::string headphoneSpeaker = "Headphone with Speakers";
    std::string audioOutput = "TV Speaker";
    int32_t lipSync = 0;
};

class SoundSettings {
public:
    // The process's one instance, made on first use.
    static SoundSettings& instance();

    SoundSettingsRecord getSettings();
    // Writes every field, changed or not; the individual results are not examined.
    void setSettings(const SoundSettingsRecord& record);

    SoundSettings(const SoundSettings&) = delete;
    SoundSettings& operator=(const SoundSettings&) = delete;

private:
    SoundSettings() = default;

    Zel::Core::Mutex mutex_;
};

}  // namespace Sv
}  // namespace norvane
