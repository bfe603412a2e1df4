// Sound Diagnose: shows the TV's main sound settings and writes a whole new set of them.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

// The id ends in SETTINGS, unlike the picture tool's: the agent's server knows it so.
inline constexpr norvane::Sv::CommandTraits kSoundDiagnoseTraits = {
    "7A31B2_LIVE_SUPPORT_SOUND_SETTINGS", norvane::Sv::kKindTool, 500,
    kHandlesDescription | kHandlesExecute | kHandlesGet};

class SoundDiagnoseTool : public norvane::Sv::Descriptor<kSoundDiagnoseTraits> {
public:
    SoundDiagnoseTool();
    CommandHandler* create() override;
};

class CommandSoundDiagnose : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // 3 unless all six settings come with their types. Read-only flags and ranges of the
    // descriptor are advice to the agent only: what comes is written.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
    // The current values; the request is not read.
    int32_t getHandler(const ZelJson::Value& request, ZelJson::Value& reply) override;
};

}  // namespace Sv
}  // namespace Zel
