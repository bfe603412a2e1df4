// What the inspections show: tuner signal, video, audio and colour format, inputs, CEC devices,
// Bluetooth state, HDCP keys, network state and the TV application's inspection answers. Values
// that cannot be shown read as "Not available".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace norvane {

std::string BizGetTvSignalQuality();
// "Not available" also when the modulation is unknown.
std::string BizGetTvSignalLevel();
std::string BizGetChannelFrequency();
std::string BizGetModulationType();
std::string BizGetTvVideoFormat();
std::string BizGetTvAudioFormat();
std::string BizGetTvColourFormat();
std::string BizGetMainPlayInfo();
std::string BizGetPictureInspectionRespond();
std::string BizGetSoundInspectionRespond();

// The list readers append to `list`. The Bluetooth ones return the read status, the others 0.
int32_t BizGetVStrBTSelfDiagnoseInfo(std::vector<std::string>& list);
int32_t BizGetVStrBTDeviceList(std::vector<std::string>& list);
int32_t BizGetVStrSourceList(std::vector<std::string>& list);
int32_t BizGetVStrCecInputNames(std::vector<std::string>& list);
int32_t BizGetVStrHDMIPortNameList(std::vector<std::string>& list);
int32_t BizGetVStrHdcpKeyList(std::vector<std::string>& list);

int32_t BizGetLocalNetworkAvailable();
// Asks the TV to refresh its network state first; blocks for one second.
int32_t BizGetNetworkLinkStatus();

}  // namespace norvane
