// Sound diagnostic: which audio output is in use and whether a headphone path exists. It
// also asks the TV to run its sound check in front of the viewer; the answer is read later in
// the sound diagnose tool.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kSoundDiagnosticTraits = {
    "7A31B2_LIVE_SUPPORT_NORVNE_SOUND_DIAGNOSTIC", norvane::Sv::kKindDiagnostic, 2000,
    kHandlesDescription | kHandlesExecute};

class SoundDiagnostic : public norvane::Sv::Descriptor<kSoundDiagnosticTraits> {
public:
    CommandHandler* create() override;
};

class CommandSoundDiagnostic : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
