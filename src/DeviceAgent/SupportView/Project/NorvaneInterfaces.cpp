#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/NorvaneInterfaces"

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"

#include <initializer_list>

#include "common/HostLog.h"

namespace norvane {
namespace {

// The callback table. Written only during start-up, read without locks afterwards.
struct CallbackTable {
#define NORVANE_SLOT_FIELD(number, name, type) slot::type name = nullptr;
    NORVANE_CALLBACK_SLOTS(NORVANE_SLOT_FIELD)
#undef NORVANE_SLOT_FIELD
};

CallbackTable table;

// Stand-in lists answered by list wrappers whose slot is empty.
namespace stand_in {
const std::initializer_list<const char*> kHdcpKeys = {"HDCP1.4 key", "Test HDCP1.4 Key",
                                                      "HDCP2.2 key", "Test HDCP2.2 Key"};
const std::initializer_list<const char*> kHdmiPorts = {"HDMI1", "HDMI2", "HDMI3", "HDMI4"};
const std::initializer_list<const char*> kCecDevices = {"HDMI1-BD", "HDMI1-BSP", "HDMI1-AMP",
                                                        "HDMI4-BD"};
// Pairs of a source name and its alias.
const std::initializer_list<const char*> kSources = {"TV",    "Antenna",      "AV",    "Composite",
                                                     "HDMI1", "Game Console", "HDMI2", "Blu-ray"};
const std::initializer_list<const char*> kPictureModes = {
    "Vivid", "Standard", "Energy Saving", "Theater", "Game", "Sports", "CALIBRTED"};
const std::initializer_list<const char*> kColourTemperatures = {"Medium", "Low", "Mid-Low", "High"};
const std::initializer_list<const char*> kLevels = {"Off", "Low", "Medium", "High"};
const std::initializer_list<const char*> kMotionModes = {"Off", "Custom", "Clear", "Standard",
                                                         "Smooth"};
const std::initializer_list<const char*> kSoundModes = {"Standard", "Speech", "Late Night",
                                                        "Theater",  "Music",  "Sports"};
const std::initializer_list<const char*> kAudioOutputs = {"TV Speaker", "BT Sound Bar"};
const std::initializer_list<const char*> kLanguages = {"English", "French", "German", "Spanish",
                                                       "Italian"};
const std::initializer_list<const char*> kBluetoothDiagnosis = {"OK", "Test BT Module",
                                                                "Test_BT_FW_1.0"};
// One device per entry: "name,address,profile,attribute".
const std::initializer_list<const char*> kBluetoothDevices = {
    "Test BT Speaker,00:11:22:33:44:55,A2DP,Connected",
    "Test BT Headphones,00:11:22:33:44:66,A2DP,Paired"};
}  // namespace stand_in

// The wrapper shapes.

std::string queryText(slot::StringQuery function, const char* standIn) {
    std::string text(standIn);
    if (function != nullptr) {
        text = function();
    }
    return text;
}

template <typename Result>
Result queryValue(Result (*function)(), Result standIn) {
    return function != nullptr ? function() : standIn;
}

int32_t queryList(slot::ListQuery function, std::vector<std::string>& list,
                  std::initializer_list<const char*> standIn) {
    if (function == nullptr) {
        list.insert(list.end(), standIn.begin(), standIn.end());
        return 0;
    }
    return function(list);
}

// Writers never report a failure to their callers.
template <typename Value>
int32_t write(int32_t (*function)(Value), Value value) {
    if (function != nullptr) {
        function(value);
    }
    return 0;
}

template <typename... Arguments>
int32_t act(int32_t (*function)(Arguments...), int32_t standIn, Arguments... arguments) {
    return function != nullptr ? function(arguments...) : standIn;
}

}  // namespace

#define NORVANE_DEFINE_SLOT_SETTER(number, name, type) \
    void NvRegister##name(slot::type function) {       \
        table.name = function;                         \
    }
NORVANE_CALLBACK_SLOTS(NORVANE_DEFINE_SLOT_SETTER)
#undef NORVANE_DEFINE_SLOT_SETTER

// Identity

std::string NvGetSystemCountry() {
    NV_TRACE(__func__);
    return queryText(table.GetSystemCountry, "Test Country");
}
std::string NvGetPlatformMode() {
    NV_TRACE(__func__);
    return queryText(table.GetPlatformMode, "Mstar6886");
}
std::string NvGetSystemLanguage() {
    NV_TRACE(__func__);
    return queryText(table.GetSystemLanguage, "Test Language");
}
std::string NvGetFactoryMode() {
    NV_TRACE(__func__);
    return queryText(table.GetFactoryMode, "User Mode");
}
std::string NvGetEsn() {
    NV_TRACE(__func__);
    return queryText(table.GetEsn, "Netflix Key Value");
}
std::string NvGetCiPlusKeyName() {
    NV_TRACE(__func__);
    return queryText(table.GetCiPlusKeyName, "CI+ Key Value");
}
int32_t NvGetVStrHdcpKeyList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrHdcpKeyList, list, stand_in::kHdcpKeys);
}
std::string NvGetEdidInfo() {
    NV_TRACE(__func__);
    return queryText(table.GetEdidInfo, "EDID Info Value");
}
std::string NvGetZelPassword() {
    NV_TRACE(__func__);
    return queryText(table.GetZelPassword, "");
}
std::string NvGenerateZelPassword(const std::vector<std::string>& parts) {
    NV_TRACE(__func__);
    return table.GenerateZelPassword != nullptr ? table.GenerateZelPassword(parts) : "";
}
std::string NvGetEthernetMac() {
    NV_TRACE(__func__);
    return queryText(table.GetEthernetMac, "unknown");
}
std::string NvGetSerialNumber() {
    NV_TRACE(__func__);
    return queryText(table.GetSerialNumber, "Test_ID");
}
std::string NvGetBrand() {
    NV_TRACE(__func__);
    return queryText(table.GetBrand, "");
}
std::string NvGetZelModel() {
    NV_TRACE(__func__);
    return queryText(table.GetZelModel, "");
}
std::string NvGetZelSubModel() {
    NV_TRACE(__func__);
    return queryText(table.GetZelSubModel, "0002");
}
std::string NvGetSwVersion() {
    NV_TRACE(__func__);
    return queryText(table.GetSwVersion, "Norvane_Softversion");
}
std::string NvGetManufacturedDate() {
    NV_TRACE(__func__);
    return queryText(table.GetManufacturedDate, "");
}
std::string NvGetInitialPowerOnDate() {
    NV_TRACE(__func__);
    return queryText(table.GetInitialPowerOnDate, "");
}
std::string NvGetRegion() {
    NV_TRACE(__func__);
    return queryText(table.GetRegion, "EU");
}
int32_t NvIsMacPrivacyRegion(const std::string& region) {
    NV_TRACE(__func__);
    return act<const std::string&>(table.IsMacPrivacyRegion, 1, region);
}

// Inspections and diagnostics

int32_t NvPictureInspectionNotifyAlt() {
    NV_TRACE(__func__);
    return act(table.PictureInspectionNotifyAlt, 0);
}
int32_t NvPictureInspectionNotify() {
    NV_TRACE(__func__);
    return act(table.PictureInspectionNotify, 0);
}
std::string NvGetPictureInspectionRespond() {
    NV_TRACE(__func__);
    return queryText(table.GetPictureInspectionRespond, "No Respones");
}
std::string NvGetSoundInspectionRespond() {
    NV_TRACE(__func__);
    return queryText(table.GetSoundInspectionRespond, "No Respones");
}
int32_t NvGetSpdifValue() {
    NV_TRACE(__func__);
    return queryValue(table.GetSpdifValue, 0);
}
bool NvIsBTSoundBarType() {
    NV_TRACE(__func__);
    return queryValue(table.IsBTSoundBarType, false);
}
bool NvIsHeadphoneConnected() {
    NV_TRACE(__func__);
    return queryValue(table.IsHeadphoneConnected, false);
}
std::string NvGetTvVideoFormat() {
    NV_TRACE(__func__);
    return queryText(table.GetTvVideoFormat, "");
}
std::string NvGetTvAudioFormat() {
    NV_TRACE(__func__);
    return queryText(table.GetTvAudioFormat, "");
}
std::string NvGetTvColourFormat() {
    NV_TRACE(__func__);
    return queryText(table.GetTvColourFormat, "");
}
std::string NvGetTvSignalQuality() {
    NV_TRACE(__func__);
    return queryText(table.GetTvSignalQuality, "");
}
std::string NvGetTvSignalLevel() {
    NV_TRACE(__func__);
    return queryText(table.GetTvSignalLevel, "");
}
std::string NvGetTvHDRType() {
    NV_TRACE(__func__);
    return queryText(table.GetTvHDRType, "");
}
std::string NvGetModulationType() {
    NV_TRACE(__func__);
    return queryText(table.GetModulationType, "");
}
std::string NvGetChannelFrequency() {
    NV_TRACE(__func__);
    return queryText(table.GetChannelFrequency, "");
}
std::string NvGetMainPlayInfo() {
    NV_TRACE(__func__);
    return queryText(table.GetMainPlayInfo, "");
}
int32_t NvGetVStrHDMIPortNameList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrHDMIPortNameList, list, stand_in::kHdmiPorts);
}
int32_t NvGetVStrCecInputNames(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrCecInputNames, list, stand_in::kCecDevices);
}
bool NvIsCecEnabled() {
    NV_TRACE(__func__);
    return queryValue(table.IsCecEnabled, true);
}
std::string NvGetArcPortName() {
    NV_TRACE(__func__);
    return queryText(table.GetArcPortName, "");
}
int32_t NvArcCheck(std::string& result, std::string& details) {
    NV_TRACE(__func__);
    if (table.ArcInspect == nullptr) {
        result = "N/A";
        details = "No Arc device.";
        return 0;
    }
    return table.ArcInspect(result, details);
}
int32_t NvGetVStrBTSelfDiagnoseInfo(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrBTSelfDiagnoseInfo, list, stand_in::kBluetoothDiagnosis);
}
int32_t NvGetVStrBTDeviceList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrBTDeviceList, list, stand_in::kBluetoothDevices);
}
int32_t NvGetNetworkLinkStatus() {
    NV_TRACE(__func__);
    return queryValue(table.GetNetworkLinkStatus, 0);
}
int32_t NvGetAntenna2Signal() {
    NV_TRACE(__func__);
    return queryValue(table.GetAntenna2Signal, 50);
}
std::string NvGetRemoteControlFirmware() {
    NV_TRACE(__func__);
    return queryText(table.GetRemoteControlFirmware, "");
}
int32_t NvGetTimeOutFlag() {
    NV_TRACE(__func__);
    return queryValue(table.GetTimeOutFlag, 0);
}

// Sources

int32_t NvGetVStrSourceList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrSourceList, list, stand_in::kSources);
}
std::string NvGetSourceName() {
    NV_TRACE(__func__);
    return queryText(table.GetSourceName, "");
}
int32_t NvSetSource(const std::string& source) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetSource, source);
}

// Picture

int32_t NvGetVStrPictureModeList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrPictureModeList, list, stand_in::kPictureModes);
}
std::string NvGetPictureMode() {
    NV_TRACE(__func__);
    return queryText(table.GetPictureMode, "");
}
int32_t NvSetPictureMode(const std::string& mode) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetPictureMode, mode);
}
bool NvGetOverscan() {
    NV_TRACE(__func__);
    return queryValue(table.GetOverscan, false);
}
int32_t NvSetOverscan(int32_t overscan) {
    NV_TRACE(__func__);
    return write(table.SetOverscan, overscan);
}
int32_t NvGetColourSaturation() {
    NV_TRACE(__func__);
    return queryValue(table.GetColourSaturation, 50);
}
int32_t NvSetColourSaturation(int32_t saturation) {
    NV_TRACE(__func__);
    return write(table.SetColourSaturation, saturation);
}
int32_t NvGetVStrColourTemperatureModeList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrColourTemperatureModeList, list, stand_in::kColourTemperatures);
}
std::string NvGetColourTemperature() {
    NV_TRACE(__func__);
    return queryText(table.GetColourTemperature, "");
}
int32_t NvSetColourTemperature(const std::string& temperature) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetColourTemperature, temperature);
}
int32_t NvGetVStrAdaptiveContrastList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrAdaptiveContrastList, list, stand_in::kLevels);
}
std::string NvGetAdaptiveContrast() {
    NV_TRACE(__func__);
    return queryText(table.GetAdaptiveContrast, "");
}
int32_t NvSetAdaptiveContrast(const std::string& contrast) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetAdaptiveContrast, contrast);
}
int32_t NvGetVStrUltraSmoothMotionList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrUltraSmoothMotionList, list, stand_in::kMotionModes);
}
std::string NvGetUltraSmoothMotion() {
    NV_TRACE(__func__);
    return queryText(table.GetUltraSmoothMotion, "");
}
int32_t NvSetUltraSmoothMotion(const std::string& motion) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetUltraSmoothMotion, motion);
}
int32_t NvGetVStrNoiseReductionList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrNoiseReductionList, list, stand_in::kLevels);
}
std::string NvGetNoiseReduction() {
    NV_TRACE(__func__);
    return queryText(table.GetNoiseReduction, "");
}
int32_t NvSetNoiseReduction(const std::string& reduction) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetNoiseReduction, reduction);
}
int32_t NvGetEnhancedACRState() {
    NV_TRACE(__func__);
    return queryValue(table.GetEnhancedACRState, 0);
}
int32_t NvSetEnhancedACRState(int32_t state) {
    NV_TRACE(__func__);
    return write(table.SetEnhancedACRState, state);
}

// Sound

int32_t NvGetVolume() {
    NV_TRACE(__func__);
    return queryValue(table.GetVolume, 15);
}
int32_t NvSetVolume(int32_t volume) {
    NV_TRACE(__func__);
    return write(table.SetVolume, volume);
}
std::string NvGetMuteStatus() {
    NV_TRACE(__func__);
    return queryText(table.GetMuteStatus, "");
}
int32_t NvSetMuteStatus(const std::string& mute) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetMuteStatus, mute);
}
int32_t NvGetVStrSoundModeList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrSoundModeList, list, stand_in::kSoundModes);
}
std::string NvGetSoundMode() {
    NV_TRACE(__func__);
    return queryText(table.GetSoundMode, "");
}
int32_t NvSetSoundMode(const std::string& mode) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetSoundMode, mode);
}
std::string NvGetHeadphoneMode() {
    NV_TRACE(__func__);
    return queryText(table.GetHeadphoneMode, "Headphone with Speakers");
}
int32_t NvSetHeadphoneMode(const std::string& mode) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetHeadphoneMode, mode);
}
int32_t NvGetVStrAudioOutputList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrAudioOutputList, list, stand_in::kAudioOutputs);
}
std::string NvGetAudioOutput() {
    NV_TRACE(__func__);
    return queryText(table.GetAudioOutput, "TV Speaker");
}
int32_t NvSetAudioOutput(const std::string& output) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetAudioOutput, output);
}
int32_t NvGetLipSync() {
    NV_TRACE(__func__);
    return queryValue(table.GetLipSync, 6);
}
int32_t NvSetLipSync(int32_t lipSync) {
    NV_TRACE(__func__);
    return write(table.SetLipSync, lipSync);
}

// Languages and DTV

int32_t NvGetVStrAudioLanguageList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrAudioLanguageList, list, stand_in::kLanguages);
}
std::string NvGetCurrentSubtitle() {
    NV_TRACE(__func__);
    return queryText(table.GetCurrentSubtitle, "");
}
int32_t NvSetCurrentSubtitle(const std::string& language) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetCurrentSubtitle, language);
}
int32_t NvGetVStrSubtitleList(std::vector<std::string>& list) {
    NV_TRACE(__func__);
    return queryList(table.GetVStrSubtitleList, list, stand_in::kLanguages);
}
std::string NvGetCurrentAudioLanguage() {
    NV_TRACE(__func__);
    return queryText(table.GetCurrentAudioLanguage, "");
}
int32_t NvSetAudioLanguage(const std::string& language) {
    NV_TRACE(__func__);
    return write<const std::string&>(table.SetAudioLanguage, language);
}
bool NvGetHbbTVState() {
    NV_TRACE(__func__);
    return queryValue(table.GetHbbTVState, false);
}
int32_t NvSetHbbTVState(int32_t enabled) {
    NV_TRACE(__func__);
    return write(table.SetHbbTVState, enabled);
}

// Tools

int32_t NvFactoryReset() {
    NV_TRACE(__func__);
    return act(table.FactoryReset, 0);
}
int32_t NvActionOTA() {
    NV_TRACE(__func__);
    return act(table.ActionOTA, 0);
}
int32_t NvRestoreAQPQ(int32_t mode) {
    NV_TRACE(__func__);
    return act(table.RestoreAQPQ, 0, mode);
}
int32_t NvResetAQPQ(int32_t mode) {
    NV_TRACE(__func__);
    return act(table.ResetAQPQ, 0, mode);
}

// Files and screen

std::string NvGetReadFilePath(const std::string& fileType, int32_t index) {
    NV_TRACE(__func__);
    return table.GetReadFilePath != nullptr ? table.GetReadFilePath(fileType, index) : "";
}
int32_t NvBackupReadFile(const std::string& fileType) {
    NV_TRACE(__func__);
    return act<const std::string&>(table.BackupReadFile, 0, fileType);
}
int32_t NvRemoveReadFile(const std::string& fileType) {
    NV_TRACE(__func__);
    return act<const std::string&>(table.RemoveReadFile, 0, fileType);
}
int32_t NvFillVideoFrameBuffer(unsigned char* buffer, uint32_t size) {
    NV_TRACE(__func__);
    return act(table.FillVideoFrameBuffer, -1, buffer, size);
}

// Remote buttons

int32_t NvKeyEventProc(const std::string& key) {
    NV_TRACE(__func__);
    if (table.KeyEventProc != nullptr) {
        table.KeyEventProc(std::string(key));
    } else {
        NV_HOST_LOG(kSeverityRoutine, "[Stub] Norvane Key %s pressed.\n", key.c_str());
    }
    return 0;
}

}  // namespace norvane
