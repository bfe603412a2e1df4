#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolPicture"

#include "DeviceAgent/SupportView/Project/CommandNvToolPicture.h"

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "DeviceAgent/SupportView/Project/PictureSettings.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

constexpr const char* kSource = "SOURCE_INPUT";
constexpr const char* kPictureMode = "PICTURE_MODE";
constexpr const char* kOverscan = "OVERSCAN";
constexpr const char* kColourSaturation = "COLOUR_SATURATION";
constexpr const char* kColourTemperature = "COLOUR_TEMPERATURE";
constexpr const char* kAdaptiveContrast = "ADAPTIVE_CONTRAST";
constexpr const char* kNoiseReduction = "NOISE_REDUCTION";
constexpr const char* kInspectionRespond = "Picture_Inspection_Respond";

ZelJson::Value pictureInputs(const PictureSettingsRecord& current, const std::string& respond) {
    ZelJson::Value inputs = emptyArray();
    inputs.append(InputBuilder(kSource, "Source", "Current source", 1, kInputString)
                      .defaultValue("")
                      .shown(true)
                      .build());
    inputs.append(
        InputBuilder(kPictureMode, "Picture Mode", "Show/Set the picture mode.", 2, kInputList)
            .defaultValue(current.pictureMode)
            .values(labelList(norvane::NvGetVStrPictureModeList))
            .shown(false)
            .build());
    inputs.append(InputBuilder(kOverscan, "Overscan", "Enable/disable Overscan.", 3, kInputBool)
                      .defaultValue(current.overscan)
                      .shown(false)
                      .build());
    inputs.append(InputBuilder(kColourSaturation, "Colour Saturation",
                               "Show/Set the clour saturation.", 4, kInputNumeric)
                      .range(0, 100)
                      .defaultValue(current.colourSaturation)
                      .shown(false)
                      .build());
    inputs.append(InputBuilder(kColourTemperature, "Colour Temperature",
                               "Show/Set Colour Temperature.", 5, kInputList)
                      .defaultValue(current.colourTemperature)
                      .values(labelList(norvane::NvGetVStrColourTemperatureModeList))
                      .shown(false)
                      .build());
    inputs.append(InputBuilder(kAdaptiveContrast, "Adaptive Contrast", "Select adaptive contrast",
                               6, kInputList)
                      .defaultValue(current.adaptiveContrast)
                      .values(labelList(norvane::NvGetVStrAdaptiveContrastList))
                      .shown(false)
                      .build());
    inputs.append(
        InputBuilder(kNoiseReduction, "Noise Reduction", "Select Noise Reduction", 7, kInputList)
            .defaultValue(current.noiseReduction)
            .values(labelList(norvane::NvGetVStrNoiseReductionList))
            .shown(false)
            .build());
    // Order 8 would be the ultra smooth motion, which the agent is not offered.
    inputs.append(InputBuilder(kInspectionRespond, "Picture Inspection Respond From User",
                               "Show the Picture Inspection Respond From User", 9, kInputString)
                      .defaultValue(respond)
                      .shown(true)
                      .build());
    return inputs;
}

}  // namespace

PictureDiagnoseTool::PictureDiagnoseTool() {
    NV_TRACE(__func__);
}

CommandHandler* PictureDiagnoseTool::create() {
    NV_TRACE(__func__);
    return new CommandPictureDiagnose(*this);
}

int32_t CommandPictureDiagnose::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    const PictureSettingsRecord current = PictureSettings::instance().getSettings();
    describeTool(description, "Picture Diagnose", "This is Norvane picture diagnose tool.", 2,
                 pictureInputs(current, norvane::NvGetPictureInspectionRespond()), emptyArray());
    return kResultDone;
}

int32_t CommandPictureDiagnose::getHandler(const ZelJson::Value&, ZelJson::Value& reply) {
    NV_TRACE(__func__);
    reply[kSource] = norvane::NvGetSourceName();
    const PictureSettingsRecord current = PictureSettings::instance().getSettings();
    reply[kPictureMode] = current.pictureMode;
    reply[kOverscan] = current.overscan;
    reply[kColourSaturation] = current.colourSaturation;
    reply[kColourTemperature] = current.colourTemperature;
    reply[kAdaptiveContrast] = current.adaptiveContrast;
    reply[kNoiseReduction] = current.noiseReduction;
    reply[kInspectionRespond] = norvane::NvGetPictureInspectionRespond();
    return kResultDone;
}

int32_t CommandPictureDiagnose::executeHandler(const ZelJson::Value& input, ZelJson::Value&) {
    NV_TRACE(__func__);
    PictureSettingsRecord wanted;
    const bool complete = MemberReader(input)
                              .read(kPictureMode, wanted.pictureMode)
                              .read(kOverscan, wanted.overscan)
                              .read(kColourSaturation, wanted.colourSaturation)
                              .read(kColourTemperature, wanted.colourTemperature)
                              .read(kAdaptiveContrast, wanted.adaptiveContrast)
                              .read(kNoiseReduction, wanted.noiseReduction)
                              .complete();
    if (!complete) {
        NV_HOST_LOG(norvane::kSeverityError, "%s", kInvalidParameterMessage);
        return kResultInvalidParameter;
    }
    PictureSettings::instance().setSettings(wanted);
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
