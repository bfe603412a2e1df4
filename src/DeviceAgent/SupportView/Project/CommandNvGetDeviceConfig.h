// Device configuration download: the TV's log chunks and its channel-list archive, prepared on
// the TV, read whole, deleted, and sent base64-encoded.
#pragma once

#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace norvane {
namespace Sv {

inline constexpr CommandTraits kGetDeviceConfigTraits = {
    "FFFFFF_LIVE_SUPPORT_GET_DEVICE_CONFIG", kKindTool, 30000,
    Zel::Sv::kHandlesDescription | Zel::Sv::kHandlesExecute};

class GetDeviceConfig : public Descriptor<kGetDeviceConfigTraits> {
public:
    Zel::Sv::CommandHandler* create() override;
};

class CommandGetDeviceConfig : public HandlerBase {
public:
    using HandlerBase::HandlerBase;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    // "DOWNLOAD_FILE_TYPE" is "Log0" (a new log collection, its first chunk), "Log1" (the
    // second chunk of the last collection) or "Channel List". The output becomes one string, the
    // base64 of the file, or of "The file is empty." when there is none (an unknown type
    // included; result 0). 6 when the file cannot be opened, 7 when it is empty or cannot be
    // read (then the string is empty). The file is deleted in every case.
    int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) override;
};

}  // namespace Sv
}  // namespace norvane
