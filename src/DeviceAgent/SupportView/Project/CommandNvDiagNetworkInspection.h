// Network diagnostic: the link type and the connection's speed measured by the agent.
// Its long time allowance covers the speed test.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace Zel {
namespace Sv {

inline constexpr norvane::Sv::CommandTraits kNetworkDiagnosticTraits = {
    "FFFFFF_LIVE_SUPPORT_NETWORK_DIAGNOSTICS", norvane::Sv::kKindDiagnostic, 30000,
    kHandlesDescription | kHandlesExecute};

class NetworkDiagnostic : public norvane::Sv::Descriptor<kNetworkDiagnosticTraits> {
public:
    CommandHandler* create() override;
};

class CommandNetworkDiagnostic : public norvane::Sv::HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace Zel
