#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagSoundInspection"

#include "DeviceAgent/SupportView/Project/CommandNvDiagSoundInspection.h"

#include "DeviceAgent/SupportView/Project/DiagnosticReports.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

// The report key of each audio output mode the TV reports (1 to 4).
constexpr const char* kOutputKeys[] = {"TV Speaker", "ARC Speaker", "Spdif Only", "BT Sound Bar"};

void writeOutputVerdicts(ZelJson::Value& output, int32_t outputMode) {
    int32_t mode = 1;
    for (const char* key : kOutputKeys) {
        output[key] = verdict(mode == outputMode);
        ++mode;
    }
}

}  // namespace

CommandHandler* SoundDiagnostic::create() {
    NV_TRACE(__func__);
    return new CommandSoundDiagnostic(*this);
}

int32_t CommandSoundDiagnostic::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "Sound Inspection",
                    "This is Norvane sound inspection.", 3);
    return kResultDone;
}

int32_t CommandSoundDiagnostic::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    writeOutputVerdicts(output, norvane::NvGetSpdifValue());
    // The headphone is only asked about when no Bluetooth audio device is there.
    output["Headphone Speaker"] =
        verdict(norvane::NvIsBTSoundBarType() || norvane::NvIsHeadphoneConnected());
    norvane::NvPictureInspectionNotifyAlt();
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
