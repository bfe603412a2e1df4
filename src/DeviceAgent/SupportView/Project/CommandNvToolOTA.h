// OTA: starts the TV's software update.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kNorvaneOTATraits = {
    "7A31B2_LIVE_SUPPORT_OTA_TOOL", norvane::Sv::kKindTool, 10000,
    kHandlesDescription | kHandlesExecute};

class NorvaneOTATool : public norvane::Sv::Descriptor<kNorvaneOTATraits> {
public:
    NorvaneOTATool();
    CommandHandler* create() override;
};

class CommandNorvaneOTATool : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // The input is not read.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
