// PQ AQ Reset: resets the picture (PQ) and/or sound (AQ) settings to the TV's defaults.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kPQAQResetTraits = {
    "7A31B2_LIVE_SUPPORT_PQ_AQ_RESET", norvane::Sv::kKindTool, 1000,
    kHandlesDescription | kHandlesExecute};

class PQAQResetTool : public norvane::Sv::Descriptor<kPQAQResetTraits> {
public:
    PQAQResetTool();
    CommandHandler* create() override;
};

class CommandPQAQReset : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // "PQ_RESET" and "AQ_RESET" are "Yes" or "No"; anything but "Yes" leaves that part alone.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
