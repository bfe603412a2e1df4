// Picture Diagnose: shows the TV's main picture settings and writes a whole new set of them.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kPictureDiagnoseTraits = {
    "7A31B2_LIVE_SUPPORT_PICTURE_DIAGNOSE_TOOL", norvane::Sv::kKindTool, 500,
    kHandlesDescription | kHandlesExecute | kHandlesGet};

class PictureDiagnoseTool : public norvane::Sv::Descriptor<kPictureDiagnoseTraits> {
public:
    PictureDiagnoseTool();
    CommandHandler* create() override;
};

class CommandPictureDiagnose : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // 3 unless all six settings come with their types; the ultra smooth motion, which the agent
    // is not offered, goes back to "Off" with every successful execution.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
    // The current values; the request is not read.
    int32_t getHandler(const ZelJson::Value& request, ZelJson::Value& reply) override;
};

}  // namespace Sv
}  // namespace Zel
