// Picture settings between the agent's labels and the middleware's numbers: picture mode (with
// its HDR, Dolby Vision and Enhanced(ACR) variants), colour temperature, adaptive contrast, ultra
// smooth motion, noise reduction, overscan, saturation, HDR type, the source switch, the picture
// inspection trigger and the option lists.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace norvane {

// The picture and sound mode that the TV's content recognition drives, and the states of
// "marlo.sl2.i32.app.setting.enhanced.acr.state" that matter here.
inline constexpr const char* kEnhancedAcrMode = "Enhanced(ACR)";
inline constexpr int32_t kAcrActive = 2;
inline constexpr int32_t kAcrAvailable = 1;

std::string BizGetPictureMode();
int32_t BizSetPictureMode(const std::string& label);
int32_t BizGetEnhancedACRState();
int32_t BizSetEnhancedACRState(int32_t state);
// "Yes" only for plain HDR (flag 1).
std::string BizGetTvHDRType();

std::string BizGetColourTemperature();
int32_t BizSetColourTemperature(const std::string& label);
std::string BizGetAdaptiveContrast();
int32_t BizSetAdaptiveContrast(const std::string& label);
std::string BizGetUltraSmoothMotion();
int32_t BizSetUltraSmoothMotion(const std::string& label);
std::string BizGetNoiseReduction();
int32_t BizSetNoiseReduction(const std::string& label);
bool BizGetOverscan();
int32_t BizSetOverscan(int32_t overscan);
int32_t BizGetColourSaturation();
int32_t BizSetColourSaturation(int32_t saturation);

int32_t BizSetSource(const std::string& source);
int32_t BizPictureInspectionNotify();
// The same trigger with the code the sound inspection uses.
int32_t BizPictureInspectionNotifyAlt();

// The list getters append to `list`.
int32_t BizGetVStrPictureModeList(std::vector<std::string>& list);
int32_t BizGetVStrColourTemperatureModeList(std::vector<std::string>& list);
int32_t BizGetVStrAdaptiveContrastList(std::vector<std::string>& list);
int32_t BizGetVStrUltraSmoothMotionList(std::vector<std::string>& list);
int32_t BizGetVStrNoiseReductionList(std::vector<std::string>& list);

// Whether the mode lists offer "Enhanced(ACR)": the state is 2, or a second read gives 1.
bool enhancedACRModeOffered();

}  // namespace norvane
