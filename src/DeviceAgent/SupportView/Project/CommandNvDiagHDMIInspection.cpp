#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagHDMIInspection"

#include "DeviceAgent/SupportView/Project/CommandNvDiagHDMIInspection.h"

#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/DiagnosticReports.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;
using norvane::formatText;

namespace {

// A CEC device entry starts with its port name and a separator ("HDMI1-BD"); what follows is
// the device's label.
constexpr size_t kDevicePrefixLength = 6;

struct HdmiState {
    std::vector<std::string> devices;
    bool cecEnabled;
    std::string arcPort;
};

// Adds the devices whose entry names `port` to its report. A matched entry loses its prefix in
// the list itself, so a later port no longer matches on the prefix alone.
int32_t takeDevicesOf(const std::string& port, std::vector<std::string>& devices,
                      ZelJson::Value& report) {
    int32_t count = 0;
    for (std::string& device : devices) {
        if (device.find(port) != std::string::npos) {
            ++count;
            device.erase(0, kDevicePrefixLength);
            report[formatText("%s device %d", port.c_str(), count)] = device;
        }
    }
    return count;
}

ZelJson::Value portReport(const std::string& port, HdmiState& state) {
    ZelJson::Value report(ZelJson::objectValue);
    if (takeDevicesOf(port, state.devices, report) == 0) {
        report[port] = "No device connected";
        return report;
    }
    if (port == state.arcPort) {
        std::string result;
        std::string details;
        norvane::NvArcCheck(result, details);
        report["ARC Inspection"] = result;
    }
    report[formatText("%s CEC Inspection", port.c_str())] = verdict(state.cecEnabled);
    return report;
}

}  // namespace

CommandHandler* HDMIDiagnostic::create() {
    NV_TRACE(__func__);
    return new CommandHDMIDiagnostic(*this);
}

int32_t CommandHDMIDiagnostic::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "HDMI Inspection",
                    "This is Norvane HDMI inspection.", 5);
    return kResultDone;
}

int32_t CommandHDMIDiagnostic::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    const std::vector<std::string> ports = labelList(norvane::NvGetVStrHDMIPortNameList);
    HdmiState state{labelList(norvane::NvGetVStrCecInputNames), norvane::NvIsCecEnabled(),
                    norvane::NvGetArcPortName()};
    for (const std::string& port : ports) {
        output[port] = portReport(port, state);
    }
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
