#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/SoundSettings"

#include "DeviceAgent/SupportView/Project/SoundSettings.h"

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace norvane {
namespace Sv {

SoundSettings& SoundSettings::instance() {
    static SoundSettings settings;
    return settings;
}

SoundSettingsRecord SoundSettings::getSettings() {
    NV_HOST_LOG(kSeverityRoutine, "Get Sound Settings");
    SoundSettingsRecord record;
    Zel::Core::LockMutex lock(mutex_);
    record.volume = NvGetVolume();
    record.mute = NvGetMuteStatus();
    record.soundMode = NvGetSoundMode();
    record.headphoneSpeaker = NvGetHeadphoneMode();
    record.audioOutput = NvGetAudioOutput();
    record.lipSync = NvGetLipSync();
    return record;
}

void SoundSettings::setSettings(const SoundSettingsRecord& record) {
    NV_HOST_LOG(kSeverityRoutine, "Set Sound Settings");
    Zel::Core::LockMutex lock(mutex_);
    NvSetVolume(record.volume);
    NvSetMuteStatus(record.mute);
    NvSetSoundMode(record.soundMode);
    NvSetHeadphoneMode(record.headphoneSpeaker);
    NvSetAudioOutput(record.audioOutput);
    NvSetLipSync(record.lipSync);
}

}  // namespace Sv
}  // namespace norvane
