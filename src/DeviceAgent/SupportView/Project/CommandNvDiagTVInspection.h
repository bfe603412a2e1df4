// TV signal diagnostic: the signal and format of what the TV is showing.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kTVDiagnosticTraits = {
    "7A31B2_LIVE_SUPPORT_NORVNE_TV_DIAGNOSTIC", norvane::Sv::kKindDiagnostic, 2000,
    kHandlesDescription | kHandlesExecute};

class TVDiagnostic : public norvane::Sv::Descriptor<kTVDiagnosticTraits> {
public:
    CommandHandler* create() override;
};

class CommandTVDiagnostic : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
