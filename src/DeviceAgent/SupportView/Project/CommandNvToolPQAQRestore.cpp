#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolPQAQRestore"

#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQRestore.h"

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

PQAQRestoreTool::PQAQRestoreTool() {
    NV_TRACE(__func__);
}

CommandHandler* PQAQRestoreTool::create() {
    NV_TRACE(__func__);
    return new CommandPQAQRestore(*this);
}

int32_t CommandPQAQRestore::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    ZelJson::Value inputs = emptyArray();
    inputs.append(yesNoInput(
        "PQ_RESTORE", "PQ Restore(Restore to the state at the beginning of the session)", 1));
    inputs.append(yesNoInput(
        "AQ_RESTORE", "AQ Restore(Restore to the state at the beginning of the session)", 2));
    describeTool(description, "PQ AQ Restore", "This is a Norvane PQ & AQ restore tool.", 8, inputs,
                 emptyArray());
    return kResultDone;
}

int32_t CommandPQAQRestore::executeHandler(const ZelJson::Value& input, ZelJson::Value&) {
    NV_TRACE(__func__);
    if (isYes(input, "PQ_RESTORE")) {
        NV_HOST_LOG(norvane::kSeverityRoutine, "Do PQ restore %s .", __func__);
        norvane::NvRestoreAQPQ(kPictureSettingsPart);
    }
    if (isYes(input, "AQ_RESTORE")) {
        NV_HOST_LOG(norvane::kSeverityRoutine, "Do AQ restore %s.", __func__);
        norvane::NvRestoreAQPQ(kSoundSettingsPart);
    }
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
