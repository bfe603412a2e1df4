#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagBTInspection"

#include "DeviceAgent/SupportView/Project/CommandNvDiagBTInspection.h"

#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/DiagnosticReports.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

// Positions in the self-diagnosis list; a shorter list means the module did not answer.
constexpr size_t kDiagnosisState = 0;
constexpr size_t kDiagnosisFirmware = 2;

// Moves the text after the last comma of `rest` into `field`; false when there is no comma.
bool splitOffLastField(std::string& rest, std::string& field) {
    const size_t comma = rest.rfind(',');
    if (comma == std::string::npos) {
        return false;
    }
    field = rest.substr(comma + 1);
    rest.erase(comma);
    return true;
}

// One entry "name,address,profile,attribute" as a report record. A name may itself hold commas,
// the other fields never do, so they are split off at the last three commas. An entry without
// all of them is shown whole as the name, so nothing the TV reported is lost.
ZelJson::Value deviceRecord(const std::string& entry) {
    std::string name = entry;
    std::string address;
    std::string profile;
    std::string attribute;
    if (!(splitOffLastField(name, attribute) && splitOffLastField(name, profile) &&
          splitOffLastField(name, address))) {
        name = entry;
        address.clear();
        profile.clear();
        attribute.clear();
    }
    ZelJson::Value record(ZelJson::objectValue);
    record["Name"] = name;
    record["Address"] = address;
    record["Profile"] = profile;
    record["Attribute"] = attribute;
    return record;
}

}  // namespace

CommandHandler* BTDiagnostic::create() {
    NV_TRACE(__func__);
    return new CommandBTDiagnostic(*this);
}

int32_t CommandBTDiagnostic::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "BT Inspection",
                    "This is Norvane BT inspection.", 7);
    return kResultDone;
}

int32_t CommandBTDiagnostic::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    const std::vector<std::string> diagnosis = labelList(norvane::NvGetVStrBTSelfDiagnoseInfo);
    if (diagnosis.size() > kDiagnosisFirmware) {
        output["BT Inspection"] = diagnosis[kDiagnosisState];
        output["Bluetooth Firmware Name"] = diagnosis[kDiagnosisFirmware];
    } else {
        output["BT Inspection"] = verdict(false);
    }
    ZelJson::Value devices(ZelJson::arrayValue);
    for (const std::string& entry : labelList(norvane::NvGetVStrBTDeviceList)) {
        devices.append(deviceRecord(entry));
    }
    output["Bluetooth Device List"] = devices;
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
