#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/ConsoleLog.h"

namespace norvane {

void RegisterZelBizInterface() {
    consoleLog(kLogInfo, "RegisterZelBizInterface called.");
    // Settings bridge: identity, picture, sound, languages, diagnostics, data module.

    // Files, screen and keys: log and channel-list files, screen frames, key sending.
}

}  // namespace norvane
