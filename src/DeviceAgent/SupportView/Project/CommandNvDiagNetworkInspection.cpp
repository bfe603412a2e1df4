#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagNetworkInspection"

#include "DeviceAgent/SupportView/Project/CommandNvDiagNetworkInspection.h"

#include "DeviceAgent/SupportView/Project/DiagnosticReports.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"
#include "zel/sv/SupportViewManager.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;
using norvane::formatText;

namespace {

// Link types as the TV reports them.
constexpr int32_t kWiredLink = 1;
constexpr int32_t kWirelessLink = 2;

// Megabits per second, as measured by the agent.
struct Speeds {
    double up = 0.0;
    double down = 0.0;
};

// The test runs whatever the link, as the agent measures its own connection. A failed test
// leaves the speeds as it found them, and they are reported all the same.
Speeds measureSpeeds() {
    Speeds speeds;
    if (SupportViewManager::Instance().runSpeedTest(speeds.up, speeds.down) != 0) {
        NV_HOST_LOG_AS("executeHandler", norvane::kSeverityError, "Speed Test Failed.");
    }
    return speeds;
}

ZelJson::Value speedReport(const Speeds& speeds) {
    ZelJson::Value report(ZelJson::objectValue);
    report["Speed Up (Mbps)"] = formatText("%.2f", speeds.up);
    report["Speed Down (Mbps)"] = formatText("%.2f", speeds.down);
    return report;
}

}  // namespace

CommandHandler* NetworkDiagnostic::create() {
    NV_TRACE(__func__);
    return new CommandNetworkDiagnostic(*this);
}

int32_t CommandNetworkDiagnostic::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "Network Inspection",
                    "This is Norvane network inspection.", 6);
    return kResultDone;
}

int32_t CommandNetworkDiagnostic::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    NV_HOST_LOG(norvane::kSeverityRoutine, "Do Network Inspection.\n");
    const int32_t linkType = norvane::NvGetNetworkLinkStatus();
    const Speeds speeds = measureSpeeds();
    if (linkType == kWiredLink) {
        output["Wired"] = speedReport(speeds);
    } else if (linkType == kWirelessLink) {
        ZelJson::Value report = speedReport(speeds);
        report["Signal Strength"] = norvane::NvGetAntenna2Signal();
        report["WiFi Firmware"] = norvane::NvGetRemoteControlFirmware();
        output["WiFi"] = report;
    } else {
        output["No Connect"]["Connect Status"] = "Not Connect.";
    }
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
