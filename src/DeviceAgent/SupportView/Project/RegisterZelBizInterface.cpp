#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "bridge/BizDataModule.h"
#include "bridge/BizDiagnostics.h"
#include "bridge/BizIdentity.h"
#include "bridge/BizLanguages.h"
#include "bridge/BizLogFiles.h"
#include "bridge/BizPicture.h"
#include "bridge/BizScreenCapture.h"
#include "bridge/BizSound.h"
#include "common/ConsoleLog.h"

namespace norvane {

void RegisterZelBizInterface() {
    consoleLog(kLogInfo, "RegisterZelBizInterface called.");
    // Settings bridge: identity, picture, sound, languages, diagnostics, data module.
    NvRegisterGetSystemCountry(BizGetSystemCountry);
    NvRegisterGetPlatformMode(BizGetPlatformMode);
    NvRegisterGetSystemLanguage(BizGetSystemLanguage);
    NvRegisterGetFactoryMode(BizGetFactoryMode);
    NvRegisterGetEsn(BizGetEsn);
    NvRegisterGetCiPlusKeyName(BizGetCiPlusKeyName);
    NvRegisterGetVStrHdcpKeyList(BizGetVStrHdcpKeyList);
    NvRegisterPictureInspectionNotifyAlt(BizPictureInspectionNotifyAlt);
    NvRegisterGetSpdifValue(BizGetSpdifValue);
    NvRegisterIsBTSoundBarType(BizIsBTSoundBarType);
    NvRegisterIsHeadphoneConnected(BizIsHeadphoneConnected);
    NvRegisterPictureInspectionNotify(BizPictureInspectionNotify);
    NvRegisterGetTvVideoFormat(BizGetTvVideoFormat);
    NvRegisterGetTvAudioFormat(BizGetTvAudioFormat);
    NvRegisterGetTvColourFormat(BizGetTvColourFormat);
    NvRegisterGetTvSignalQuality(BizGetTvSignalQuality);
    NvRegisterGetTvSignalLevel(BizGetTvSignalLevel);
    NvRegisterGetTvHDRType(BizGetTvHDRType);
    NvRegisterGetModulationType(BizGetModulationType);
    NvRegisterGetChannelFrequency(BizGetChannelFrequency);
    NvRegisterGetVStrHDMIPortNameList(BizGetVStrHDMIPortNameList);
    NvRegisterGetVStrCecInputNames(BizGetVStrCecInputNames);
    NvRegisterIsCecEnabled(BizIsCecEnabled);
    NvRegisterGetArcPortName(BizGetArcPortName);
    NvRegisterArcInspect(BizArcInspect);
    NvRegisterGetZelPassword(BizGetZelPassword);
    NvRegisterGenerateZelPassword(BizGenerateZelPassword);
    NvRegisterKeyEventProc(BizSendKey);
    NvRegisterGetEthernetMac(BizGetEthernetMac);
    NvRegisterGetSerialNumber(BizGetSerialNumber);
    NvRegisterGetBrand(BizGetBrand);
    NvRegisterGetZelModel(BizGetZelModel);
    NvRegisterGetZelSubModel(BizGetZelSubModel);
    NvRegisterGetSwVersion(BizGetSwVersion);
    NvRegisterGetManufacturedDate(BizGetManufacturedDate);
    NvRegisterGetInitialPowerOnDate(BizGetInitialPowerOnDate);
    NvRegisterGetVStrSourceList(BizGetVStrSourceList);
    NvRegisterGetSourceName(BizGetSourceName);
    NvRegisterSetSource(BizSetSource);
    NvRegisterGetVStrPictureModeList(BizGetVStrPictureModeList);
    NvRegisterGetPictureMode(BizGetPictureMode);
    NvRegisterSetPictureMode(BizSetPictureMode);
    NvRegisterGetOverscan(BizGetOverscan);
    NvRegisterSetOverscan(BizSetOverscan);
    NvRegisterGetColourSaturation(BizGetColourSaturation);
    NvRegisterSetColourSaturation(BizSetColourSaturation);
    NvRegisterGetVStrColourTemperatureModeList(BizGetVStrColourTemperatureModeList);
    NvRegisterGetColourTemperature(BizGetColourTemperature);
    NvRegisterSetColourTemperature(BizSetColourTemperature);
    NvRegisterGetVStrAdaptiveContrastList(BizGetVStrAdaptiveContrastList);
    NvRegisterGetAdaptiveContrast(BizGetAdaptiveContrast);
    NvRegisterSetAdaptiveContrast(BizSetAdaptiveContrast);
    NvRegisterGetVStrUltraSmoothMotionList(BizGetVStrUltraSmoothMotionList);
    NvRegisterGetUltraSmoothMotion(BizGetUltraSmoothMotion);
    NvRegisterSetUltraSmoothMotion(BizSetUltraSmoothMotion);
    NvRegisterGetVStrNoiseReductionList(BizGetVStrNoiseReductionList);
    NvRegisterGetNoiseReduction(BizGetNoiseReduction);
    NvRegisterSetNoiseReduction(BizSetNoiseReduction);
    NvRegisterGetVolume(BizGetVolume);
    NvRegisterSetVolume(BizSetVolume);
    NvRegisterGetMuteStatus(BizGetMuteStatus);
    NvRegisterSetMuteStatus(BizSetMuteStatus);
    NvRegisterGetVStrSoundModeList(BizGetVStrSoundModeList);
    NvRegisterGetSoundMode(BizGetSoundMode);
    NvRegisterSetSoundMode(BizSetSoundMode);
    NvRegisterGetHeadphoneMode(BizGetHeadphoneMode);
    NvRegisterSetHeadphoneMode(BizSetHeadphoneMode);
    NvRegisterGetVStrAudioOutputList(BizGetVStrAudioOutputList);
    NvRegisterGetAudioOutput(BizGetAudioOutput);
    NvRegisterSetAudioOutput(BizSetAudioOutput);
    NvRegisterGetLipSync(BizGetLipSync);
    NvRegisterSetLipSync(BizSetLipSync);
    NvRegisterGetMainPlayInfo(BizGetMainPlayInfo);
    NvRegisterGetCurrentSubtitle(BizGetCurrentSubtitle);
    NvRegisterSetCurrentSubtitle(BizSetCurrentSubtitle);
    NvRegisterGetCurrentAudioLanguage(BizGetCurrentAudioLanguage);
    NvRegisterSetAudioLanguage(BizSetAudioLanguage);
    NvRegisterGetHbbTVState(BizGetHbbTVState);
    NvRegisterSetHbbTVState(BizSetHbbTVState);
    NvRegisterFactoryReset(BizFactoryReset);
    NvRegisterActionOTA(BizActionOTA);
    NvRegisterRestoreAQPQ(BizRestoreAQPQ);
    NvRegisterResetAQPQ(BizResetAQPQ);
    NvRegisterGetVStrBTSelfDiagnoseInfo(BizGetVStrBTSelfDiagnoseInfo);
    NvRegisterGetVStrBTDeviceList(BizGetVStrBTDeviceList);
    NvRegisterGetNetworkLinkStatus(BizGetNetworkLinkStatus);
    NvRegisterGetAntenna2Signal(BizGetAntenna2Signal);
    NvRegisterGetRemoteControlFirmware(BizGetRemoteControlFirmware);
    NvRegisterGetPictureInspectionRespond(BizGetPictureInspectionRespond);
    NvRegisterGetSoundInspectionRespond(BizGetSoundInspectionRespond);
    NvRegisterGetRegion(BizGetRegion);
    NvRegisterGetEnhancedACRState(BizGetEnhancedACRState);
    NvRegisterSetEnhancedACRState(BizSetEnhancedACRState);

    // Files, screen and keys: log and channel-list files, screen frames, key sending.
    NvRegisterGetReadFilePath(BizGetReadFilePath);
    NvRegisterBackupReadFile(BizBackupReadFile);
    NvRegisterRemoveReadFile(BizRemoveReadFile);
    NvRegisterFillVideoFrameBuffer(BizFillVideoFrameBuffer);
}

}  // namespace norvane
