// Device information, a hidden service command: the agent executes it to read the set's identity
// and uptime values. It has no descriptor document (its description operation keeps the shared
// default).
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace norvane {
namespace Sv {

inline constexpr CommandTraits kGetDeviceInfoTraits = {"FFFFFF_LIVE_SUPPORT_GET_DEVICE_INFO",
                                                       kKindService, 50, Zel::Sv::kHandlesExecute};

class GetDeviceInfo : public Descriptor<kGetDeviceInfoTraits> {
public:
    Zel::Sv::CommandHandler* create() override;
};

class CommandGetDeviceInfo : public HandlerBase {
public:
    using HandlerBase::HandlerBase;
    // Fills the output with "OUI", "MODEL_GROUP", "NRDEVID", "ESN", "MAC", "CURRENT_DATE",
    // "UPTIME_SECONDS", "MFG_SOFTWARE_VERSION", "MFG_COMPANY_NAME" and "MFG_HARDWARE_MODEL".
    // Throws std::out_of_range (with "OUI" already set) when the agent's operator id is shorter
    // than 6 characters. The input is not read.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace norvane
