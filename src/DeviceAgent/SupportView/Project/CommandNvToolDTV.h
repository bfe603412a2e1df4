// DTV Diagnose: the favoured audio language and, where the region has it, HbbTV, as they are
// when the TV shows its tuner source.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kDTVDiagnoseTraits = {
    "7A31B2_LIVE_SUPPORT_DTV_DIAGNOSTIC_TOOL", norvane::Sv::kKindTool, 1000,
    kHandlesDescription | kHandlesExecute | kHandlesGet};

class DTVDiagnoseTool : public norvane::Sv::Descriptor<kDTVDiagnoseTraits> {
public:
    DTVDiagnoseTool();
    CommandHandler* create() override;
};

class CommandDTVDiagnose : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    // Reads the TV as it is: building the descriptor never changes the source.
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // Switches to the tuner, then applies what comes well typed; the rest is skipped. Always 0.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
    // Switches to the tuner, then reports; the request is not read.
    int32_t getHandler(const ZelJson::Value& request, ZelJson::Value& reply) override;
};

}  // namespace Sv
}  // namespace Zel
