// Factory Reset: resets the TV to its factory defaults.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace norvane {
namespace Sv {

inline constexpr CommandTraits kResetFactoryDefaultsTraits = {
    "FFFFFF_LIVE_SUPPORT_RESET_FACTORY_DEFAULTS", kKindTool, 1000,
    Zel::Sv::kHandlesDescription | Zel::Sv::kHandlesExecute};

class ResetFactoryDefaults : public Descriptor<kResetFactoryDefaultsTraits> {
public:
    Zel::Sv::CommandHandler* create() override;
};

class CommandResetFactoryDefaults : public HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // The input is not read.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace norvane
