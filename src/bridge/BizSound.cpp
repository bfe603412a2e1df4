#include "bridge/BizSound.h"

#include "bridge/BizPicture.h"
#include "bridge/BizSettingAccess.h"
#include "bridge/ZelBizClient.h"
#include "common/ConsoleLog.h"
#include "tvconfig/ConfigUtil.h"

namespace norvane {
namespace {

constexpr const char* kVolumeKey = "marlo.sl2.i32.sound.main.volume";
constexpr const char* kMuteKey = "marlo.sl2.i32.sound.main.mute";
constexpr const char* kHeadphoneModeKey = "marlo.sl2.i32.sound.headphone.mode";
constexpr const char* kAudioOutputKey = "marlo.sl2.i32.sound.speaker.arc.mode";
constexpr const char* kLipSyncKey = "marlo.sl2.i32.sound.lipsync";
constexpr const char* kSoundModeKey = "marlo.sl2.i32.sound.enum.adjust";
constexpr const char* kArcPortKey = "marlo.sl2.i32.arc.port";
constexpr const char* kArcDeviceKey = "marlo.sl2.i32.sound.arcdev.exist";
constexpr const char* kAmplifierModeKey = "marlo.sl2.i32.cec.amp.audiomode";
constexpr const char* kBluetoothDeviceTypeKey = "marlo.sl2.i32.sound.bluetooth.device.type";
constexpr const char* kHeadphoneExistKey = "marlo.sl2.i32.sound.headphone.exist";
constexpr const char* kCecKey = "marlo.sl2.i32.cec.functionality";
constexpr const char* kHbbTvKey = "marlo.sl2.i32.basic.settings.enum.dvb.mode.hbbtv";
constexpr const char* kAntenna2SignalKey = "marlo.sl2.i32.network.link.signal.antenna2";

constexpr const char* kModelConfigFile = "/nvdata/model/config/config.ini";
constexpr const char* kModelConfigSection = "System";
constexpr const char* kBluetoothSupportEntry = "BluetoothSupport";

constexpr const char* kMute = "Mute";
constexpr const char* kHeadphoneWithSpeakers = "Headphone with Speakers";
constexpr const char* kHeadphoneOnly = "Headphone Only";
constexpr int32_t kSoundBarDevice = 1;
constexpr int32_t kArcPlaysSound = 1;

constexpr Label kAudioOutputs[] = {
    {1, "TV Speaker"}, {2, "ARC"}, {3, "SPDIF Only"}, {4, "BT Sound Bar"}};
constexpr int32_t kTvSpeaker = 1;
constexpr Label kSoundModes[] = {{0, "Standard"}, {1, "Speech"},  {2, "Late Night"},
                                 {3, "Music"},    {4, "Theater"}, {5, "Sports"}};
constexpr int32_t kStandardSound = 0;

constexpr const char* kWiredOutputOptions[] = {"TV Speaker", "ARC", "SPDIF Only"};
constexpr const char* kHeadphoneModeOptions[] = {kHeadphoneWithSpeakers, kHeadphoneOnly};
// The menu's order, not the numbers' order.
constexpr const char* kSoundModeOptions[] = {"Standard", "Speech", "Late Night",
                                             "Theater",  "Music",  "Sports"};

void writeSetting(const char* key, int32_t value) {
    ZelBizClient::getInstance()->setIntValue(key, value);
}

bool bluetoothSoundSupported() {
    int32_t flag = 0;
    if (!tvConfig::ConfigUtil::instance().getIntValue(kModelConfigFile, kModelConfigSection,
                                                      kBluetoothSupportEntry, flag)) {
        consoleLog(kLogError, "BluetoothSupport flag get error");
        flag = 0;
    }
    return flag == 1;
}

}  // namespace

int32_t BizGetVolume() {
    const int32_t volume = readIntSetting(kVolumeKey);
    consoleLog(kLogInfo, "BizGetVolume: %d.\n", volume);
    return volume;
}

int32_t BizSetVolume(int32_t volume) {
    writeSetting(kVolumeKey, volume);
    return 0;
}

std::string BizGetMuteStatus() {
    const int32_t mute = readIntSetting(kMuteKey);
    consoleLog(kLogInfo, "BizGetMuteStatus: %d.\n", mute);
    return mute == 0 ? "Unmute" : kMute;
}

int32_t BizSetMuteStatus(const std::string& label) {
    const int32_t mute = label == kMute ? 1 : 0;
    consoleLog(kLogInfo, "BizSetMuteStatus: %d.\n", mute);
    writeSetting(kMuteKey, mute);
    return 0;
}

std::string BizGetHeadphoneMode() {
    consoleLog(kLogInfo, "BizGetHeadphoneMode called.");
    return readIntSetting(kHeadphoneModeKey) == 0 ? kHeadphoneWithSpeakers : kHeadphoneOnly;
}

int32_t BizSetHeadphoneMode(const std::string& label) {
    consoleLog(kLogInfo, "BizSetHeadphoneMode called.");
    writeSetting(kHeadphoneModeKey, label == kHeadphoneWithSpeakers ? 0 : 1);
    return 0;
}

std::string BizGetAudioOutput() {
    consoleLog(kLogInfo, "BizGetAudioOutput called.");
    return labelFor(kAudioOutputs, readIntSetting(kAudioOutputKey), "TV Speaker");
}

int32_t BizSetAudioOutput(const std::string& label) {
    const int32_t output = numberFor(kAudioOutputs, label, kTvSpeaker);
    writeSetting(kAudioOutputKey, output);
    consoleLog(kLogInfo, "Set Audio Output: strValue=%s, iValue=%d.", label.c_str(), output);
    return 0;
}

int32_t BizGetSpdifValue() {
    const int32_t output = readIntSetting(kAudioOutputKey);
    consoleLog(kLogInfo, "SpdifValue = %d.\n", output);
    return output;
}

int32_t BizGetLipSync() {
    const int32_t lipSync = readIntSetting(kLipSyncKey);
    consoleLog(kLogInfo, "BizGetLipSync: %d.\n", lipSync);
    return lipSync;
}

int32_t BizSetLipSync(int32_t lipSync) {
    consoleLog(kLogInfo, "BizSetLipSync: %d.\n", lipSync);
    writeSetting(kLipSyncKey, lipSync);
    return 0;
}

std::string BizGetSoundMode() {
    if (BizGetEnhancedACRState() == kAcrActive) {
        return kEnhancedAcrMode;
    }
    return labelFor(kSoundModes, readIntSetting(kSoundModeKey), "Standard");
}

int32_t BizSetSoundMode(const std::string& label) {
    if (label == kEnhancedAcrMode) {
        BizSetEnhancedACRState(kAcrActive);
        return 0;
    }
    if (BizGetEnhancedACRState() == kAcrActive) {
        BizSetEnhancedACRState(kAcrAvailable);
    }
    writeSetting(kSoundModeKey, numberFor(kSoundModes, label, kStandardSound));
    return 0;
}

std::string BizGetArcPortName() {
    const int32_t port = readIntSetting(kArcPortKey);
    if (port == 0) {
        return std::string();
    }
    const std::string name = "HDMI" + std::to_string(port);
    consoleLog(kLogInfo, "ARC Port Name is %s.", name.c_str());
    return name;
}

int32_t BizArcInspect(std::string& result, std::string& details) {
    const bool devicePresent = readIntSetting(kArcDeviceKey) != 0;
    const bool arcPlaysSound = readIntSetting(kAmplifierModeKey) == kArcPlaysSound;
    if (!devicePresent) {
        result = "NA";
        details = "No device connect.";
    } else if (arcPlaysSound) {
        result = "OK";
        // The pass text the inspection report shows for every check.
        details = "Picture Inspection PASSED.";
    } else {
        result = "NG";
        details = "ARC device error.";
    }
    consoleLog(kLogInfo, "BizArcInspect, result:%s, details:%s.", result.c_str(), details.c_str());
    return 0;
}

bool BizIsBTSoundBarType() {
    return readIntSetting(kBluetoothDeviceTypeKey) == kSoundBarDevice;
}

bool BizIsHeadphoneConnected() {
    return readIntSetting(kHeadphoneExistKey) == 1;
}

bool BizIsCecEnabled() {
    const int32_t cec = readIntSetting(kCecKey);
    // Worded like the lip-sync log on purpose: existing log readers match on it.
    consoleLog(kLogInfo, "lipsync is %d.\n", cec);
    return cec != 0;
}

bool BizGetHbbTVState() {
    return readIntSetting(kHbbTvKey) != 0;
}

int32_t BizSetHbbTVState(int32_t enabled) {
    writeSetting(kHbbTvKey, enabled != 0 ? 1 : 0);
    return 0;
}

int32_t BizGetAntenna2Signal() {
    return readIntSetting(kAntenna2SignalKey);
}

int32_t BizGetVStrHeadphoneModeList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrHeadphoneModeList called.");
    appendLabels(list, kHeadphoneModeOptions);
    return 0;
}

int32_t BizGetVStrAudioOutputList(std::vector<std::string>& list) {
    appendLabels(list, kWiredOutputOptions);
    if (bluetoothSoundSupported()) {
        list.emplace_back("BT Sound Bar");
    }
    return 0;
}

int32_t BizGetVStrSoundModeList(std::vector<std::string>& list) {
    appendLabels(list, kSoundModeOptions);
    if (enhancedACRModeOffered()) {
        list.emplace_back(kEnhancedAcrMode);
    }
    return 0;
}

}  // namespace norvane
