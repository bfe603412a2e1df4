// Change Source: switches the TV to the input source the agent picks.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kSourceChangeTraits = {
    "7A31B2_LIVE_SUPPORT_SOURCE_CHANGE_TOOL", norvane::Sv::kKindTool, 1000,
    kHandlesDescription | kHandlesExecute};

class SourceChangeTool : public norvane::Sv::Descriptor<kSourceChangeTraits> {
public:
    SourceChangeTool();
    CommandHandler* create() override;
};

class CommandSourceChange : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // Switches to the string "SOURCE_LIST" and echoes it in the output. Always 0: a wrongly
    // typed name is only logged.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
