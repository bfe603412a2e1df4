#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/ConsoleLog.h"

namespace norvane {

void RegisterZelBizInterface() {
    consoleLog(kLogInfo, "RegisterZelBizInterface called.");
    // The bridge functions, in slot order, as each bridge area lands.
}

}  // namespace norvane
