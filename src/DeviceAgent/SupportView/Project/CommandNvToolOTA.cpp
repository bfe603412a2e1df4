#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolOTA"

#include "DeviceAgent/SupportView/Project/CommandNvToolOTA.h"

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

NorvaneOTATool::NorvaneOTATool() {
    NV_TRACE(__func__);
}

CommandHandler* NorvaneOTATool::create() {
    NV_TRACE(__func__);
    return new CommandNorvaneOTATool(*this);
}

int32_t CommandNorvaneOTATool::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeTool(description, "OTA", "This is a Norvane OTA tool.", 7, emptyArray(), emptyArray());
    return kResultDone;
}

int32_t CommandNorvaneOTATool::executeHandler(const ZelJson::Value&, ZelJson::Value&) {
    NV_TRACE(__func__);
    NV_HOST_LOG(norvane::kSeverityRoutine, "Do OTA.\n");
    norvane::NvActionOTA();
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
