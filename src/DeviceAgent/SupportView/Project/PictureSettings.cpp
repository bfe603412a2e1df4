#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/PictureSettings"

#include "DeviceAgent/SupportView/Project/PictureSettings.h"

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace norvane {
namespace Sv {

PictureSettings& PictureSettings::instance() {
    static PictureSettings settings;
    return settings;
}

PictureSettingsRecord PictureSettings::getSettings() {
    NV_HOST_LOG(kSeverityRoutine, "Get the Picture Settings");
    PictureSettingsRecord record;
    Zel::Core::LockMutex lock(mutex_);
    record.pictureMode = NvGetPictureMode();
    record.overscan = NvGetOverscan();
    record.colourSaturation = NvGetColourSaturation();
    record.colourTemperature = NvGetColourTemperature();
    record.adaptiveContrast = NvGetAdaptiveContrast();
    record.ultraSmoothMotion = NvGetUltraSmoothMotion();
    record.noiseReduction = NvGetNoiseReduction();
    return record;
}

void PictureSettings::setSettings(const PictureSettingsRecord& record) {
    NV_HOST_LOG(kSeverityRoutine, "Set the Picture Settings");
    Zel::Core::LockMutex lock(mutex_);
    NvSetPictureMode(record.pictureMode);
    NvSetOverscan(record.overscan ? 1 : 0);
    NvSetColourSaturation(record.colourSaturation);
    NvSetColourTemperature(record.colourTemperature);
    NvSetAdaptiveContrast(record.adaptiveContrast);
    NvSetUltraSmoothMotion(record.ultraSmoothMotion);
    NvSetNoiseReduction(record.noiseReduction);
}

}  // namespace Sv
}  // namespace norvane
