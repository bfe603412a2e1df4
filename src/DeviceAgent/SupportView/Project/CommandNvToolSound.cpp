#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolSound"

#include "DeviceAgent/SupportView/Project/CommandNvToolSound.h"

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "DeviceAgent/SupportView/Project/SoundSettings.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

constexpr const char* kSource = "SOURCE_NAME";
constexpr const char* kVolume = "VOLUME_NUM";
constexpr const char* kMute = "MUTE";
constexpr const char* kSoundMode = "SOUND_MODE";
constexpr const char* kHeadphoneSpeaker = "HEADPHONE_SPEAKER";
constexpr const char* kAudioOutput = "AUDIO_OUTPUT";
constexpr const char* kLipSync = "LIP_SYNC";
constexpr const char* kInspectionRespond = "Sound_Inspection_Respond";

// With this audio output mode the agent may not change the sound mode or the lip sync.
constexpr int32_t kOutputModeLockingSound = 2;

// What the TV state makes read-only for the agent.
struct SoundLocks {
    bool soundAndLipSync;
    bool headphoneSpeaker;
};

ZelJson::Value soundInputs(const SoundSettingsRecord& current, const std::string& source,
                           const SoundLocks& locks, const std::string& respond) {
    ZelJson::Value inputs = emptyArray();
    inputs.append(InputBuilder(kSource, "Source", "Current source name", 1, kInputString)
                      .defaultValue(source)
                      .shown(true)
                      .build());
    inputs.append(InputBuilder(kVolume, "Volume", "Set the volume.", 2, kInputNumeric)
                      .range(0, 100)
                      .defaultValue(current.volume)
                      .shown(false)
                      .build());
    inputs.append(InputBuilder(kMute, "Mute/Unmute", "Select mute or unmute.", 3, kInputList)
                      .defaultValue(current.mute)
                      .values({"Mute", "Unmute"})
                      .shown(false)
                      .build());
    inputs.append(InputBuilder(kSoundMode, "Sound Mode", "Select the sound mode.", 4, kInputList)
                      .defaultValue(current.soundMode)
                      .values(labelList(norvane::NvGetVStrSoundModeList))
                      .shown(locks.soundAndLipSync)
                      .build());
    inputs.append(InputBuilder(kHeadphoneSpeaker, "Headphone Speaker",
                               "Select the headphone speaker.", 5, kInputList)
                      .defaultValue(current.headphoneSpeaker)
                      .values({"Headphone with Speakers", "Headphone Only"})
                      .shown(locks.headphoneSpeaker)
                      .build());
    // Repeats the sound mode's description, as the agent's server has it.
    inputs.append(
        InputBuilder(kAudioOutput, "Audio Output", "Select the sound mode.", 6, kInputList)
            .defaultValue(current.audioOutput)
            .values(labelList(norvane::NvGetVStrAudioOutputList))
            .shown(false)
            .build());
    inputs.append(InputBuilder(kLipSync, "Lip Sync", "Set Lip Sync.", 7, kInputNumeric)
                      .range(0, 10)
                      .defaultValue(current.lipSync)
                      .shown(locks.soundAndLipSync)
                      .build());
    inputs.append(InputBuilder(kInspectionRespond, "Sound Inspection Respond From User",
                               "Show the Sound Inspection Respond From User", 8, kInputString)
                      .defaultValue(respond)
                      .shown(true)
                      .build());
    return inputs;
}

}  // namespace

SoundDiagnoseTool::SoundDiagnoseTool() {
    NV_TRACE(__func__);
}

CommandHandler* SoundDiagnoseTool::create() {
    NV_TRACE(__func__);
    return new CommandSoundDiagnose(*this);
}

int32_t CommandSoundDiagnose::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    const SoundSettingsRecord current = SoundSettings::instance().getSettings();
    const std::string source = norvane::NvGetSourceName();
    const SoundLocks locks = {norvane::NvGetSpdifValue() == kOutputModeLockingSound,
                              !norvane::NvIsHeadphoneConnected()};
    describeTool(description, "Sound Diagnose", "This is Norvane sound diagnose tool.", 3,
                 soundInputs(current, source, locks, norvane::NvGetSoundInspectionRespond()),
                 emptyArray());
    return kResultDone;
}

int32_t CommandSoundDiagnose::getHandler(const ZelJson::Value&, ZelJson::Value& reply) {
    NV_TRACE(__func__);
    reply[kSource] = norvane::NvGetSourceName();
    const SoundSettingsRecord current = SoundSettings::instance().getSettings();
    reply[kVolume] = current.volume;
    reply[kMute] = current.mute;
    reply[kSoundMode] = current.soundMode;
    reply[kHeadphoneSpeaker] = current.headphoneSpeaker;
    reply[kAudioOutput] = current.audioOutput;
    reply[kLipSync] = current.lipSync;
    reply[kInspectionRespond] = norvane::NvGetSoundInspectionRespond();
    return kResultDone;
}

int32_t CommandSoundDiagnose::executeHandler(const ZelJson::Value& input, ZelJson::Value&) {
    NV_TRACE(__func__);
    SoundSettingsRecord wanted;
    const bool complete = MemberReader(input)
                              .read(kVolume, wanted.volume)
                              .read(kMute, wanted.mute)
                              .read(kSoundMode, wanted.soundMode)
                              .read(kHeadphoneSpeaker, wanted.headphoneSpeaker)
                              .read(kAudioOutput, wanted.audioOutput)
                              .read(kLipSync, wanted.lipSync)
                              .complete();
    if (!complete) {
        NV_HOST_LOG(norvane::kSeverityError, "%s", kInvalidParameterMessage);
        return kResultInvalidParameter;
    }
    SoundSettings::instance().setSettings(wanted);
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
