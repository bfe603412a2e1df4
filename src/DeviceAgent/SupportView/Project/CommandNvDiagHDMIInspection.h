// HDMI diagnostic: for each HDMI port, the CEC devices connected to it, the ARC check on the
// ARC port and whether CEC is on.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kHDMIDiagnosticTraits = {
    "7A31B2_LIVE_SUPPORT_NORVNE_HDMI_DIAGNOSTIC", norvane::Sv::kKindDiagnostic, 2000,
    kHandlesDescription | kHandlesExecute};

class HDMIDiagnostic : public norvane::Sv::Descriptor<kHDMIDiagnosticTraits> {
public:
    CommandHandler* create() override;
};

class CommandHDMIDiagnostic : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
