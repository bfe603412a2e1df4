// The system information: the TV's identity and key state.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kSystemInfoTraits = {
    "7A31B2_LIVE_SUPPORT_NORVNE_SYSTEM_INFO_DIAGNOSTIC", norvane::Sv::kKindDiagnostic, 2000,
    kHandlesDescription | kHandlesExecute};

class SystemInfo : public norvane::Sv::Descriptor<kSystemInfoTraits> {
public:
    CommandHandler* create() override;
};

class CommandSystemInfo : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
