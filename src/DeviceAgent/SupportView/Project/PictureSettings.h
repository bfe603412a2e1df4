// The TV's main picture settings as the picture diagnose tool reads and writes them: always all
// seven at once, one whole read or one whole write at a time, so that a descriptor built while an
// execution runs sees either the old or the new set.
#pragma once

#include <cstdint>
#include <string>

#include "zel/core/Mutex.h"

namespace norvane {
namespace Sv {

// Labels as the agent sees them; a fresh record holds the values an execution writes for the
// settings the agent does not offer.
struct PictureSettingsRecord {
    std::string pictureMode = "Standard";
    bool overscan = false;
    int32_t colourSaturation = 50;
    std::string colourTemperature = "Standard";
    std::string adaptiveContrast = "Off";
    std::string ultraSmoothMotion = "Off";
    std::string noiseReduction = "Off";
};

class PictureSettings {
public:
    // The process's one instance, made on first use.
    static PictureSettings& instance();

    PictureSettingsRecord getSettings();
    // Writes every field, changed or not; the individual results are not examined.
    void setSettings(const PictureSettingsRecord& record);

    PictureSettings(const PictureSettings&) = delete;
    PictureSettings& operator=(const PictureSettings&) = delete;

private:
    PictureSettings() = default;

    Zel::Core::Mutex mutex_;
};

}  // namespace Sv
}  // namespace norvane
