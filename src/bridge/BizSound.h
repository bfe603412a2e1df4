// Sound settings between the agent's labels and the middleware's numbers: volume, mute,
// headphone mode, audio output, lip sync, sound mode (with Enhanced(ACR)), the ARC port and its
// inspection, the yes/no readers of connected devices and services, and the option lists.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace norvane {

int32_t BizGetVolume();
int32_t BizSetVolume(int32_t volume);
std::string BizGetMuteStatus();
int32_t BizSetMuteStatus(const std::string& label);
std::string BizGetHeadphoneMode();
int32_t BizSetHeadphoneMode(const std::string& label);
std::string BizGetAudioOutput();
int32_t BizSetAudioOutput(const std::string& label);
// The audio output's number as the TV stores it.
int32_t BizGetSpdifValue();
int32_t BizGetLipSync();
int32_t BizSetLipSync(int32_t lipSync);
std::string BizGetSoundMode();
int32_t BizSetSoundMode(const std::string& label);

// "HDMI" and the port number, or empty when no port carries ARC.
std::string BizGetArcPortName();
// Overwrites both strings; always 0.
int32_t BizArcInspect(std::string& result, std::string& details);
bool BizIsBTSoundBarType();
bool BizIsHeadphoneConnected();
bool BizIsCecEnabled();
bool BizGetHbbTVState();
int32_t BizSetHbbTVState(int32_t enabled);
int32_t BizGetAntenna2Signal();

// The list getters append to `list`.
int32_t BizGetVStrHeadphoneModeList(std::vector<std::string>& list);
// "BT Sound Bar" only on models whose configuration says they support Bluetooth sound.
int32_t BizGetVStrAudioOutputList(std::vector<std::string>& list);
int32_t BizGetVStrSoundModeList(std::vector<std::string>& list);

}  // namespace norvane
