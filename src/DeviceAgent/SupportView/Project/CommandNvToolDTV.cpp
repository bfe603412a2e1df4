#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolDTV"

#include "DeviceAgent/SupportView/Project/CommandNvToolDTV.h"

#include <optional>
#include <string>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

constexpr const char* kAudioLanguage = "AUDIO_LANGUAGE_LIST";
constexpr const char* kHbbTV = "HBBTV_FLAG";
constexpr const char* kTunerSource = "TV";

bool regionHasHbbTV(const std::string& region) {
    return region == "EU" || region == "AU";
}

// The values are those of broadcast viewing, so the TV shows its tuner first. Returns whether
// the region has HbbTV.
bool tuneToBroadcast() {
    if (norvane::NvGetSourceName() != kTunerSource) {
        norvane::NvSetSource(kTunerSource);
    }
    return regionHasHbbTV(norvane::NvGetRegion());
}

}  // namespace

DTVDiagnoseTool::DTVDiagnoseTool() {
    NV_TRACE(__func__);
}

CommandHandler* DTVDiagnoseTool::create() {
    NV_TRACE(__func__);
    return new CommandDTVDiagnose(*this);
}

int32_t CommandDTVDiagnose::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    ZelJson::Value inputs = emptyArray();
    inputs.append(
        InputBuilder(kAudioLanguage, "Audio Language", "Audio language list.", 1, kInputList)
            .defaultValue(norvane::NvGetCurrentAudioLanguage())
            .values(labelList(norvane::NvGetVStrAudioLanguageList))
            .shown(false)
            .build());
    if (regionHasHbbTV(norvane::NvGetRegion())) {
        inputs.append(InputBuilder(kHbbTV, "HBBTV", "HBBTV enable or disable.", 2, kInputBool)
                          .defaultValue(norvane::NvGetHbbTVState())
                          .shown(false)
                          .build());
    }
    describeTool(description, "DTV Diagnose", "This is Norvane DTV diagnose tool.", 4, inputs,
                 emptyArray());
    return kResultDone;
}

int32_t CommandDTVDiagnose::getHandler(const ZelJson::Value&, ZelJson::Value& reply) {
    NV_TRACE(__func__);
    if (tuneToBroadcast()) {
        reply[kHbbTV] = norvane::NvGetHbbTVState();
    }
    reply[kAudioLanguage] = norvane::NvGetCurrentAudioLanguage();
    return kResultDone;
}

int32_t CommandDTVDiagnose::executeHandler(const ZelJson::Value& input, ZelJson::Value&) {
    NV_TRACE(__func__);
    if (tuneToBroadcast()) {
        if (const std::optional<bool> enabled = boolMember(input, kHbbTV)) {
            norvane::NvSetHbbTVState(*enabled ? 1 : 0);
        }
    }
    if (const std::optional<std::string> language = stringMember(input, kAudioLanguage)) {
        norvane::NvSetAudioLanguage(*language);
    }
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
