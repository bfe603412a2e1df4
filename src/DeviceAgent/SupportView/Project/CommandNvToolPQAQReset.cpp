#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolPQAQReset"

#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQReset.h"

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

PQAQResetTool::PQAQResetTool() {
    NV_TRACE(__func__);
}

CommandHandler* PQAQResetTool::create() {
    NV_TRACE(__func__);
    return new CommandPQAQReset(*this);
}

int32_t CommandPQAQReset::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    ZelJson::Value inputs = emptyArray();
    inputs.append(yesNoInput("PQ_RESET", "PQ Reset(Reset to the default state)", 1));
    inputs.append(yesNoInput("AQ_RESET", "AQ Reset(Reset to the default state)", 2));
    describeTool(description, "PQ AQ Reset", "This is Norvane PQ & AQ Reset tool.", 9, inputs,
                 emptyArray());
    return kResultDone;
}

int32_t CommandPQAQReset::executeHandler(const ZelJson::Value& input, ZelJson::Value&) {
    NV_TRACE(__func__);
    if (isYes(input, "PQ_RESET")) {
        NV_HOST_LOG(norvane::kSeverityRoutine, "Do PQ reset %s .", __func__);
        norvane::NvResetAQPQ(kPictureSettingsPart);
    }
    if (isYes(input, "AQ_RESET")) {
        NV_HOST_LOG(norvane::kSeverityRoutine, "Do AQ reset %s .", __func__);
        norvane::NvResetAQPQ(kSoundSettingsPart);
    }
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
