#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvResetFactoryDefaults"

#include "DeviceAgent/SupportView/Project/CommandNvResetFactoryDefaults.h"

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace norvane {
namespace Sv {

Zel::Sv::CommandHandler* ResetFactoryDefaults::create() {
    NV_TRACE(__func__);
    return new CommandResetFactoryDefaults(*this);
}

// The tool takes no inputs and reports nothing, so its descriptor has neither list.
int32_t CommandResetFactoryDefaults::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kToolCommands, "Factory Reset",
                    "This is Norvane Factory Reset tool.", 5);
    return kResultDone;
}

int32_t CommandResetFactoryDefaults::executeHandler(const ZelJson::Value&, ZelJson::Value&) {
    NV_TRACE(__func__);
    NV_HOST_LOG(kSeverityRoutine, "Implementation of reset to factory defaults");
    NvFactoryReset();
    return kResultDone;
}

}  // namespace Sv
}  // namespace norvane
