// PQ AQ Restore: brings the picture (PQ) and/or sound (AQ) settings back to the state saved when
// the support session began.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kPQAQRestoreTraits = {
    "7A31B2_LIVE_SUPPORT_PQ_AQ_RESTORE", norvane::Sv::kKindTool, 1000,
    kHandlesDescription | kHandlesExecute};

class PQAQRestoreTool : public norvane::Sv::Descriptor<kPQAQRestoreTraits> {
public:
    PQAQRestoreTool();
    CommandHandler* create() override;
};

class CommandPQAQRestore : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // "PQ_RESTORE" and "AQ_RESTORE" are "Yes" or "No"; anything but "Yes" leaves that part alone.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
