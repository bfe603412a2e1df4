// Remote button, a hidden service command: presses TV remote buttons by the agent's names.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace norvane {
namespace Sv {

inline constexpr CommandTraits kRemoteButtonTraits = {
    "FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON", kKindService, 500,
    Zel::Sv::kHandlesDescription | Zel::Sv::kHandlesExecute};

class RemoteButton : public Descriptor<kRemoteButtonTraits> {
public:
    Zel::Sv::CommandHandler* create() override;
};

class CommandRemoteButton : public HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // Presses, in order, every element of the array "BUTTONS" that is an offered name (a few
    // offered names have no TV key and end in the button map's "not found" log line); other
    // elements are skipped silently. 3 when "BUTTONS" is missing or null.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace norvane
