// Picture diagnostic: asks the TV to run its picture check in front of the viewer and
// tells the agent where the answer will be (the picture diagnose tool).
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kPictureDiagnosticTraits = {
    "7A31B2_LIVE_SUPPORT_NORVNE_PICTURE_DIAGNOSTIC", norvane::Sv::kKindDiagnostic, 2000,
    kHandlesDescription | kHandlesExecute};

class PictureDiagnostic : public norvane::Sv::Descriptor<kPictureDiagnosticTraits> {
public:
    CommandHandler* create() override;
};

class CommandPictureDiagnostic : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
