// The platform adaptation layer: the only way agent-facing code (commands, device values,
// exports) reaches the TV. Each Nv wrapper calls the bridge function registered in its slot of
// the callback table, or answers a fixed stand-in value when the slot is empty, so the commands
// keep working without the TV middleware.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/CallbackSlots.h"

namespace norvane {

// Fills slots 1 to 101 with the bridge functions (slot 102 stays empty).
void RegisterZelBizInterface();

// Slot setters: NvRegisterGetVolume(fn) and so on. No check, no lock: used during start-up.
#define NORVANE_DECLARE_SLOT_SETTER(number, name, type) void NvRegister##name(slot::type function);
NORVANE_CALLBACK_SLOTS(NORVANE_DECLARE_SLOT_SETTER)
#undef NORVANE_DECLARE_SLOT_SETTER

// Identity
std::string NvGetSystemCountry();
std::string NvGetPlatformMode();
std::string NvGetSystemLanguage();
std::string NvGetFactoryMode();
std::string NvGetEsn();
std::string NvGetCiPlusKeyName();
int32_t NvGetVStrHdcpKeyList(std::vector<std::string>& list);
std::string NvGetEdidInfo();
std::string NvGetZelPassword();
std::string NvGenerateZelPassword(const std::vector<std::string>& parts);
std::string NvGetEthernetMac();
std::string NvGetSerialNumber();
std::string NvGetBrand();
std::string NvGetZelModel();
std::string NvGetZelSubModel();
std::string NvGetSwVersion();
std::string NvGetManufacturedDate();
std::string NvGetInitialPowerOnDate();
std::string NvGetRegion();
int32_t NvIsMacPrivacyRegion(const std::string& region);

// Inspections and diagnostics
int32_t NvPictureInspectionNotifyAlt();
int32_t NvPictureInspectionNotify();
std::string NvGetPictureInspectionRespond();
std::string NvGetSoundInspectionRespond();
int32_t NvGetSpdifValue();
bool NvIsBTSoundBarType();
bool NvIsHeadphoneConnected();
std::string NvGetTvVideoFormat();
std::string NvGetTvAudioFormat();
std::string NvGetTvColourFormat();
std::string NvGetTvSignalQuality();
std::string NvGetTvSignalLevel();
std::string NvGetTvHDRType();
std::string NvGetModulationType();
std::string NvGetChannelFrequency();
std::string NvGetMainPlayInfo();
int32_t NvGetVStrHDMIPortNameList(std::vector<std::string>& list);
int32_t NvGetVStrCecInputNames(std::vector<std::string>& list);
bool NvIsCecEnabled();
std::string NvGetArcPortName();
int32_t NvArcCheck(std::string& result, std::string& details);
int32_t NvGetVStrBTSelfDiagnoseInfo(std::vector<std::string>& list);
int32_t NvGetVStrBTDeviceList(std::vector<std::string>& list);
int32_t NvGetNetworkLinkStatus();
int32_t NvGetAntenna2Signal();
std::string NvGetRemoteControlFirmware();
int32_t NvGetTimeOutFlag();

// Sources
int32_t NvGetVStrSourceList(std::vector<std::string>& list);
std::string NvGetSourceName();
int32_t NvSetSource(const std::string& source);

// Picture
int32_t NvGetVStrPictureModeList(std::vector<std::string>& list);
std::string NvGetPictureMode();
int32_t NvSetPictureMode(const std::string& mode);
bool NvGetOverscan();
int32_t NvSetOverscan(int32_t overscan);
int32_t NvGetColourSaturation();
int32_t NvSetColourSaturation(int32_t saturation);
int32_t NvGetVStrColourTemperatureModeList(std::vector<std::string>& list);
std::string NvGetColourTemperature();
int32_t NvSetColourTemperature(const std::string& temperature);
int32_t NvGetVStrAdaptiveContrastList(std::vector<std::string>& list);
std::string NvGetAdaptiveContrast();
int32_t NvSetAdaptiveContrast(const std::string& contrast);
int32_t NvGetVStrUltraSmoothMotionList(std::vector<std::string>& list);
std::string NvGetUltraSmoothMotion();
int32_t NvSetUltraSmoothMotion(const std::string& motion);
int32_t NvGetVStrNoiseReductionList(std::vector<std::string>& list);
std::string NvGetNoiseReduction();
int32_t NvSetNoiseReduction(const std::string& reduction);
int32_t NvGetEnhancedACRState();
int32_t NvSetEnhancedACRState(int32_t state);

// Sound
int32_t NvGetVolume();
int32_t NvSetVolume(int32_t volume);
std::string NvGetMuteStatus();
int32_t NvSetMuteStatus(const std::string& mute);
int32_t NvGetVStrSoundModeList(std::vector<std::string>& list);
std::string NvGetSoundMode();
int32_t NvSetSoundMode(const std::string& mode);
std::string NvGetHeadphoneMode();
int32_t NvSetHeadphoneMode(const std::string& mode);
int32_t NvGetVStrAudioOutputList(std::vector<std::string>& list);
std::string NvGetAudioOutput();
int32_t NvSetAudioOutput(const std::string& output);
int32_t NvGetLipSync();
int32_t NvSetLipSync(int32_t lipSync);

// Languages and DTV
int32_t NvGetVStrAudioLanguageList(std::vector<std::string>& list);
std::string NvGetCurrentSubtitle();
int32_t NvSetCurrentSubtitle(const std::string& language);
int32_t NvGetVStrSubtitleList(std::vector<std::string>& list);
std::string NvGetCurrentAudioLanguage();
int32_t NvSetAudioLanguage(const std::string& language);
bool NvGetHbbTVState();
int32_t NvSetHbbTVState(int32_t enabled);

// Tools
int32_t NvFactoryReset();
int32_t NvActionOTA();
int32_t NvRestoreAQPQ(int32_t mode);
int32_t NvResetAQPQ(int32_t mode);

// Files and screen
std::string NvGetReadFilePath(const std::string& fileType, int32_t index);
int32_t NvBackupReadFile(const std::string& fileType);
int32_t NvRemoveReadFile(const std::string& fileType);
int32_t NvFillVideoFrameBuffer(unsigned char* buffer, uint32_t size);

// Remote buttons
// Builds the agent-button to TV-key map; called once at start-up.
int32_t NvZelLinuxAppInit();
// Presses the TV key mapped to an agent button name; unknown names are logged and dropped.
void ZelKeyEventProc(const std::string& button);
// Sends a TV key name through the send-key slot; always 0.
int32_t NvKeyEventProc(const std::string& key);

}  // namespace norvane
