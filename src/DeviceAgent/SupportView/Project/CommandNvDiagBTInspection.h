// Bluetooth diagnostic: the Bluetooth module's self-diagnosis and the known devices.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kBTDiagnosticTraits = {
    "7A31B2_LIVE_SUPPORT_NORVNE_BT_DIAGNOSTIC", norvane::Sv::kKindDiagnostic, 2000,
    kHandlesDescription | kHandlesExecute};

class BTDiagnostic : public norvane::Sv::Descriptor<kBTDiagnosticTraits> {
public:
    CommandHandler* create() override;
};

class CommandBTDiagnostic : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
