#include "bridge/BizPicture.h"

#include "bridge/BizIdentity.h"
#include "bridge/BizSettingAccess.h"
#include "bridge/ZelBizClient.h"
#include "common/ConsoleLog.h"

namespace norvane {
namespace {

constexpr const char* kPictureModeKey = "marlo.sl2.i32.video.enum.picture.adjustment";
constexpr const char* kHdrFlagKey = "marlo.sl2.i32.video.hdr.flag";
constexpr const char* kAcrStateKey = "marlo.sl2.i32.app.setting.enhanced.acr.state";
constexpr const char* kSetPictureModeAction = "marlo.sl2.action.video.set.picture.adjustment";
constexpr const char* kColourTemperatureKey = "marlo.sl2.i32.video.enum.colour.temperature";
constexpr const char* kAdaptiveContrastKey = "marlo.sl2.i32.video.dynamic.contrast";
constexpr const char* kUltraSmoothMotionKey = "marlo.sl2.i32.video.enum.memc";
constexpr const char* kNoiseReductionKey = "marlo.sl2.i32.video.enum.dnc";
constexpr const char* kOverscanKey = "marlo.sl2.i32.video.overscan";
constexpr const char* kColourSaturationKey = "marlo.sl2.i32.video.colour.intensity";

constexpr int32_t kSdr = 0;
constexpr int32_t kHdr = 1;
constexpr int32_t kDolbyVision = 2;

constexpr int32_t kInspectPicture = 3;
constexpr int32_t kInspectSound = 4;

// Rows: mode 0 to 6, then any other mode. Columns: SDR, HDR, Dolby Vision, any other HDR kind.
// The last column is irregular on purpose; keep it.
constexpr int kModeRows = 8;
constexpr const char* kPictureModeLabels[kModeRows][4] = {
    {"Vivid", "HDR Vivid", "Dolby Vision Custom", "HDR Vivid"},
    {"Standard", "HDR Standard", "Dolby Vision Custom", "HDR Standard"},
    {"Energy Saving", "HDR Energy Saving", "Dolby Vision Dark", "Energy Saving"},
    {"Theater", "HDR Theater", "Dolby Vision Bright", "HDR Theater"},
    {"Game", "HDR Game", "Dolby Vision Custom", "HDR Standard"},
    {"Sports", "HDR Sports", "Dolby Vision Custom", "HDR Sports"},
    {"CALIBRTED", "HDR CALIBRTED", "Dolby Vision Custom", "HDR Standard"},
    {"Vivid", "HDR Vivid", "Dolby Vision Custom", "HDR Standard"},
};

constexpr Label kPictureModeNumbers[] = {
    {0, "Vivid"},
    {0, "HDR Vivid"},
    {1, "Standard"},
    {1, "HDR Standard"},
    {1, "Dolby Vision Custom"},
    {2, "Energy Saving"},
    {2, "HDR Energy Saving"},
    {2, "Dolby Vision Dark"},
    {3, "Theater"},
    {3, "HDR Theater"},
    {3, "Dolby Vision Bright"},
    {4, "Game"},
    {4, "HDR Game"},
    {5, "Sports"},
    {5, "HDR Sports"},
    {6, "CALIBRTED"},
    {6, "HDR CALIBRTED"},
};
constexpr int32_t kUnknownPictureMode = 3;

constexpr Label kColourTemperatures[] = {{0, "High"}, {1, "Medium"}, {2, "Low"}, {3, "Mid-Low"}};
constexpr Label kContrastLevels[] = {{0, "Off"}, {1, "Low"}, {2, "Medium"}, {3, "High"}};
constexpr Label kMotionModes[] = {{0, "Off"},   {1, "Custom"},   {2, "Film"},
                                  {3, "Clear"}, {4, "Standard"}, {5, "Smooth"}};
constexpr Label kNoiseReductionLevels[] = {{0, "Off"}, {1, "Low"}, {2, "Medium"}, {3, "High"}};

constexpr Label kSourceCodes[] = {{7, "TV"},     {8, "AV"},     {9, "HDMI1"},
                                  {10, "HDMI2"}, {11, "HDMI3"}, {12, "HDMI4"}};
constexpr int32_t kDefaultSourceCode = 7;

constexpr const char* kHdrModes[] = {"HDR Vivid",    "HDR Standard", "HDR Energy Saving",
                                     "HDR Theater",  "HDR Game",     "HDR Sports",
                                     "HDR CALIBRTED"};
constexpr const char* kSdrModes[] = {"Vivid", "Standard", "Energy Saving", "Theater",
                                     "Game",  "Sports",   "CALIBRTED"};
constexpr const char* kDolbyVisionModes[] = {"Dolby Vision Bright", "Dolby Vision Dark",
                                             "Dolby Vision Custom"};
constexpr const char* kOtherHdrModes[] = {"HDR Vivid", "HDR Theater", "HDR Standard"};
// Index of "Game" in the HDR and SDR lists; game mode is offered only on external inputs.
constexpr size_t kGameMode = 4;

constexpr const char* kColourTemperatureOptions[] = {"Medium", "Low", "Mid-Low", "High"};
constexpr const char* kContrastOptions[] = {"Off", "Low", "Medium", "High"};
constexpr const char* kMotionOptions[] = {"Off", "Custom", "Clear", "Standard", "Smooth"};
constexpr const char* kNoiseReductionOptions[] = {"Off", "Low", "Medium", "High"};

int flagColumn(int32_t hdrFlag) {
    switch (hdrFlag) {
        case kSdr:
            return 0;
        case kHdr:
            return 1;
        case kDolbyVision:
            return 2;
        default:
            return 3;
    }
}

int modeRow(int32_t mode) {
    return mode >= 0 && mode < kModeRows - 1 ? mode : kModeRows - 1;
}

template <size_t N>
void appendModes(std::vector<std::string>& list, const char* const (&modes)[N], bool withGame) {
    for (size_t index = 0; index < N; ++index) {
        if (withGame || index != kGameMode) {
            list.emplace_back(modes[index]);
        }
    }
}

}  // namespace

std::string BizGetPictureMode() {
    consoleLog(kLogInfo, "BizGetPictureMode called.");
    if (BizGetEnhancedACRState() == kAcrActive) {
        return kEnhancedAcrMode;
    }
    const int32_t mode = readIntSetting(kPictureModeKey);
    consoleLog(kLogInfo, "PictureMode = %d.\n", mode);
    const int32_t hdrFlag = readIntSetting(kHdrFlagKey);
    consoleLog(kLogInfo, "iHdrFlag = %d.\n", hdrFlag);
    return kPictureModeLabels[modeRow(mode)][flagColumn(hdrFlag)];
}

int32_t BizSetPictureMode(const std::string& label) {
    if (label == kEnhancedAcrMode) {
        BizSetEnhancedACRState(kAcrActive);
        return 0;
    }
    if (readIntSetting(kAcrStateKey) == kAcrActive) {
        BizSetEnhancedACRState(kAcrAvailable);
    }
    const std::string number =
        std::to_string(numberFor(kPictureModeNumbers, label, kUnknownPictureMode));
    runAction(kSetPictureModeAction, {number, "1", "1"});
    consoleLog(kLogInfo, "BizSetPictureMode: Value=%s, SetValue=%s.\n", label.c_str(),
               number.c_str());
    return 0;
}

int32_t BizGetEnhancedACRState() {
    const int32_t state = readIntSetting(kAcrStateKey);
    consoleLog(kLogInfo, "BizGetEnhancedACRState: %d.\n", state);
    return state;
}

int32_t BizSetEnhancedACRState(int32_t state) {
    ZelBizClient::getInstance()->setIntValue(kAcrStateKey, state);
    consoleLog(kLogInfo, "BizSetEnhancedACRState: %d.\n", state);
    return 0;
}

std::string BizGetTvHDRType() {
    consoleLog(kLogInfo, "BizGetTvHDRType called.");
    const int32_t hdrFlag = readIntSetting(kHdrFlagKey);
    const char* type = hdrFlag == kSdr           ? "SDR"
                       : hdrFlag == kHdr         ? "HDR"
                       : hdrFlag == kDolbyVision ? "Dolby"
                                                 : "HDR 10+";
    return std::string(type) == "HDR" ? "Yes" : "No";
}

std::string BizGetColourTemperature() {
    const int32_t value = readIntSetting(kColourTemperatureKey);
    consoleLog(kLogInfo, "BizGetColourTemperature: %d.\n", value);
    return labelFor(kColourTemperatures, value, "Low");
}

int32_t BizSetColourTemperature(const std::string& label) {
    const int32_t value = numberFor(kColourTemperatures, label, 2);
    const int32_t result = ZelBizClient::getInstance()->setIntValue(kColourTemperatureKey, value);
    consoleLog(kLogInfo, "BizSetColourTemperature to %d, iRet = %d.\n", value, result);
    return result;
}

std::string BizGetAdaptiveContrast() {
    const int32_t value = readIntSetting(kAdaptiveContrastKey);
    consoleLog(kLogInfo, "BizGetAdaptiveContrast: %d.\n", value);
    return labelFor(kContrastLevels, value, "High");
}

int32_t BizSetAdaptiveContrast(const std::string& label) {
    const int32_t value = numberFor(kContrastLevels, label, 3);
    const int32_t result = ZelBizClient::getInstance()->setIntValue(kAdaptiveContrastKey, value);
    consoleLog(kLogInfo, "BizSetAdaptiveContrast: %d, iRet = %d.\n", value, result);
    return result;
}

std::string BizGetUltraSmoothMotion() {
    const int32_t value = readIntSetting(kUltraSmoothMotionKey);
    consoleLog(kLogInfo, "BizGetUltraSmoothMotion:%d.\n", value);
    return labelFor(kMotionModes, value, "Smooth");
}

int32_t BizSetUltraSmoothMotion(const std::string& label) {
    const int32_t value = numberFor(kMotionModes, label, 5);
    const int32_t result = ZelBizClient::getInstance()->setIntValue(kUltraSmoothMotionKey, value);
    // Shares the contrast setter's wording on purpose: existing log readers match on it.
    consoleLog(kLogInfo, "Set adaptive contrast to %d, iRet = %d.\n", value, result);
    return result;
}

std::string BizGetNoiseReduction() {
    const int32_t value = readIntSetting(kNoiseReductionKey);
    consoleLog(kLogInfo, "BizGetNoiseReduction: %d.\n", value);
    return labelFor(kNoiseReductionLevels, value, "Off");
}

int32_t BizSetNoiseReduction(const std::string& label) {
    const int32_t value = numberFor(kNoiseReductionLevels, label, 0);
    const int32_t result = ZelBizClient::getInstance()->setIntValue(kNoiseReductionKey, value);
    consoleLog(kLogInfo, "BizSetNoiseReduction: %d, iRet = %d.\n", value, result);
    return result;
}

bool BizGetOverscan() {
    const int32_t value = readIntSetting(kOverscanKey);
    consoleLog(kLogInfo, "Overscan = %d.\n", value);
    return value != 0;
}

int32_t BizSetOverscan(int32_t overscan) {
    ZelBizClient::getInstance()->setIntValue(kOverscanKey, overscan);
    consoleLog(kLogInfo, "Set Overscan to %d.\n", overscan);
    return 0;
}

int32_t BizGetColourSaturation() {
    const int32_t value = readIntSetting(kColourSaturationKey);
    consoleLog(kLogInfo, "BizGetColourSaturation %d.\n", value);
    return value;
}

int32_t BizSetColourSaturation(int32_t saturation) {
    const int32_t result =
        ZelBizClient::getInstance()->setIntValue(kColourSaturationKey, saturation);
    consoleLog(kLogInfo, "BizSetColourSaturation to %d, ret = %d.\n", saturation, result);
    return result;
}

int32_t BizSetSource(const std::string& source) {
    consoleLog(kLogInfo, "Biz Set Source to %s", source.c_str());
    notifyTvApplication(numberFor(kSourceCodes, source, kDefaultSourceCode));
    return 0;
}

int32_t BizPictureInspectionNotify() {
    consoleLog(kLogInfo, "Do picture inspection.\n");
    notifyTvApplication(kInspectPicture);
    return 0;
}

int32_t BizPictureInspectionNotifyAlt() {
    notifyTvApplication(kInspectSound);
    consoleLog(kLogInfo, "Do picture inspection.\n");
    return 0;
}

int32_t BizGetVStrPictureModeList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrPictureModeList called.");
    const int32_t hdrFlag = readIntSetting(kHdrFlagKey);
    consoleLog(kLogInfo, "iHdrFlag = %d.\n", hdrFlag);
    const bool withGame = BizGetSourceName() != "TV";
    switch (hdrFlag) {
        case kHdr:
            appendModes(list, kHdrModes, withGame);
            break;
        case kDolbyVision:
            appendLabels(list, kDolbyVisionModes);
            break;
        case kSdr:
            appendModes(list, kSdrModes, withGame);
            break;
        default:
            appendLabels(list, kOtherHdrModes);
            break;
    }
    if (enhancedACRModeOffered()) {
        list.emplace_back(kEnhancedAcrMode);
    }
    return 0;
}

int32_t BizGetVStrColourTemperatureModeList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrColourTemperatureModeList called.");
    appendLabels(list, kColourTemperatureOptions);
    return 0;
}

int32_t BizGetVStrAdaptiveContrastList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrAdaptiveContrastList called.");
    appendLabels(list, kContrastOptions);
    return 0;
}

int32_t BizGetVStrUltraSmoothMotionList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrUltraSmoothMotionList called.");
    // "Film" is not offered for selection, though the setting knows it.
    appendLabels(list, kMotionOptions);
    return 0;
}

int32_t BizGetVStrNoiseReductionList(std::vector<std::string>& list) {
    consoleLog(kLogInfo, "BizGetVStrNoiseReductionList called.");
    appendLabels(list, kNoiseReductionOptions);
    return 0;
}

bool enhancedACRModeOffered() {
    return BizGetEnhancedACRState() == kAcrActive || BizGetEnhancedACRState() == kAcrAvailable;
}

}  // namespace norvane
