#include "bridge/BizDiagnostics.h"

#include "bridge/BizIdentity.h"
#include "bridge/BizSettingAccess.h"
#include "bridge/ZelBizClient.h"
#include "common/ConsoleLog.h"
#include "common/Seams.h"

namespace norvane {
namespace {

constexpr const char* kSignalQualitiesKey =
    "marlo.sl2.vint32.servicemode.tunerinfo.signalqualities";
constexpr const char* kSignalLevelsKey = "marlo.sl2.vint32.servicemode.tunerinfo.signallevels";
constexpr const char* kFrequenciesKey = "marlo.sl2.vint32.servicemode.tunerinfo.params.frequencies";
constexpr const char* kModulationKey =
    "marlo.sl2.vstr.servicemode.tunerinfo.params.modulation.type";
constexpr const char* kVideoDiagnosisKey = "marlo.sl2.str.video.diagnosis.info";
constexpr const char* kAudioDiagnosisKey = "marlo.sl2.str.audio.diagnosis.info";
constexpr const char* kMainPlayKey = "marlo.sl2.vstr.tvservice.play.main";
constexpr const char* kPictureRespondKey = "marlo.sl2.str.app.setting.zel.picture.respond";
constexpr const char* kSoundRespondKey = "marlo.sl2.str.app.setting.zel.sound.respond";
constexpr const char* kBluetoothDiagnosisKey = "marlo.sl2.vstr.bluetooth.selfdiagnose.info";
constexpr const char* kBluetoothDevicesKey = "marlo.sl2.vstr.bluetooth.device.list";
constexpr const char* kSourceNamesKey = "marlo.sl2.vstr.source.input.name";
constexpr const char* kCecInputNamesKey = "marlo.sl2.cec.input.names";
constexpr const char* kLocalNetworkKey = "marlo.sl2.i32.local.network.available";
constexpr const char* kRefreshNetworkAction = "marlo.sl2.action.network.remotecontrol.getnetinfo";
constexpr const char* kNetworkingKey = "marlo.sl2.i32.network.enum.networking";

constexpr const char* kHdcp14KeyFile = "/certificate/keyname/hdcp1.name";
constexpr const char* kHdcp22KeyFile = "/certificate/keyname/hdcp2.name";

constexpr const char* kNotAvailable = "Not available";

// Positions in the video diagnosis list.
constexpr size_t kWidth = 0;
constexpr size_t kHeight = 1;
constexpr size_t kScan = 2;
constexpr size_t kFrameRate = 3;
constexpr size_t kColourFormat = 5;
// Position of the shown value in the main play list.
constexpr size_t kMainPlayShown = 5;

// The first value of a tuner list with its unit, or `empty` (logged) for an empty list.
std::string firstTunerValue(const char* key, const char* unit, const char* error,
                            const char* empty) {
    const std::vector<int32_t> values = readIntList(key);
    if (values.empty()) {
        consoleLog(kLogError, "%s", error);
        return empty;
    }
    return std::to_string(values.front()) + unit;
}

// Appends a Bluetooth list as read and passes the read status on.
int32_t appendBluetoothList(const char* key, std::vector<std::string>& list) {
    std::vector<std::string> read;
    const int32_t status = ZelBizClient::getInstance()->getStringVector(key, read);
    if (status == 0) {
        list.insert(list.end(), read.begin(), read.end());
    }
    return status;
}

}  // namespace

std::string BizGetTvSignalQuality() {
    consoleLog(kLogInfo, "BizGetTvSignalQuality called.");
    const std::string quality =
        firstTunerValue(kSignalQualitiesKey, " %", "BizGetTvSignalQuality error.", kNotAvailable);
    return quality == "0 %" ? kNotAvailable : quality;
}

std::string BizGetTvSignalLevel() {
    consoleLog(kLogInfo, "BizGetTvSignalLevel called.");
    BizGetSourceName();
    const std::string level =
        firstTunerValue(kSignalLevelsKey, " %", "BizGetTvSignalLevel error.", kNotAvailable);
    // Without a known modulation there is no locked signal whose level means anything.
    return BizGetModulationType() == kNotAvailable ? kNotAvailable : level;
}

std::string BizGetChannelFrequency() {
    consoleLog(kLogInfo, "BizGetChannelFrequency called.");
    return firstTunerValue(kFrequenciesKey, " kHz", "BizGetChannelFrequency error.", "0 kHz");
}

std::string BizGetModulationType() {
    consoleLog(kLogInfo, "BizGetModulationType called.");
    const std::vector<std::string> types = readStringList(kModulationKey);
    if (types.empty() || types.front() == "auto" || types.front() == "invalid") {
        consoleLog(kLogError, "BizGetModulationType error.");
        return kNotAvailable;
    }
    return types.front();
}

std::string BizGetTvVideoFormat() {
    consoleLog(kLogInfo, "BizGetTvVideoFormat called.");
    const std::vector<std::string> video = readStringList(kVideoDiagnosisKey);
    if (video.size() <= kFrameRate) {
        return kNotAvailable;
    }
    return video[kWidth] + "*" + video[kHeight] + video[kScan] + "@" + video[kFrameRate] + "Hz";
}

std::string BizGetTvAudioFormat() {
    consoleLog(kLogInfo, "BizGetTvAudioFormat called.");
    const std::vector<std::string> audio = readStringList(kAudioDiagnosisKey);
    // Only a complete three-element record counts, though two elements are shown.
    if (audio.size() < 3) {
        return kNotAvailable;
    }
    const std::string format = audio[0] + " " + audio[1];
    return format == " " ? kNotAvailable : format;
}

std::string BizGetTvColourFormat() {
    consoleLog(kLogInfo, "BizGetTvColourFormat called.");
    const std::vector<std::string> video = readStringList(kVideoDiagnosisKey);
    if (video.size() <= kColourFormat || video[kColourFormat] == "unknown") {
        return kNotAvailable;
    }
    return video[kColourFormat];
}

std::string BizGetMainPlayInfo() {
    const std::vector<std::string> play = readStringList(kMainPlayKey);
    // Only a complete seven-element record counts.
    return play.size() >= 7 ? play[kMainPlayShown] : std::string();
}

std::string BizGetPictureInspectionRespond() {
    return readStringSetting(kPictureRespondKey);
}

std::string BizGetSoundInspectionRespond() {
    return readStringSetting(kSoundRespondKey);
}

int32_t BizGetVStrBTSelfDiagnoseInfo(std::vector<std::string>& list) {
    return appendBluetoothList(kBluetoothDiagnosisKey, list);
}

int32_t BizGetVStrBTDeviceList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrBTDeviceList called.");
    return appendBluetoothList(kBluetoothDevicesKey, list);
}

int32_t BizGetVStrSourceList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrSourceList called.");
    for (const std::string& name : readStringList(kSourceNamesKey)) {
        list.push_back(displaySourceName(name));
    }
    return 0;
}

int32_t BizGetVStrCecInputNames(std::vector<std::string>& list) {
    // Shares the source list's log line on purpose.
    consoleLog(kLogInfo, "BizGetVStrSourceList called.");
    const std::vector<std::string> names = readStringList(kCecInputNamesKey);
    list.insert(list.end(), names.begin(), names.end());
    return 0;
}

int32_t BizGetVStrHDMIPortNameList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrHDMIPortNameList called.");
    for (const std::string& name : readStringList(kSourceNamesKey)) {
        if (name.find("HDMI") != std::string::npos) {
            list.push_back(name);
        }
    }
    return 0;
}

int32_t BizGetVStrHdcpKeyList(std::vector<std::string>& list) {
    list.emplace_back("HDCP1.4 key");
    list.push_back(readKeyNameFile(kHdcp14KeyFile));
    list.emplace_back("HDCP2.2 key");
    list.push_back(readKeyNameFile(kHdcp22KeyFile));
    return 0;
}

int32_t BizGetLocalNetworkAvailable() {
    return readIntSetting(kLocalNetworkKey);
}

int32_t BizGetNetworkLinkStatus() {
    consoleLog(kLogInfo, "BizGetNetworkLinkStatus called.");
    runAction(kRefreshNetworkAction, {});
    // The middleware refreshes the state asynchronously.
    clock::sleepSeconds(1);
    return readIntSetting(kNetworkingKey);
}

}  // namespace norvane
