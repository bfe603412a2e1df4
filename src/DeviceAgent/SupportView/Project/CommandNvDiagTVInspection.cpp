#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagTVInspection"

#include "DeviceAgent/SupportView/Project/CommandNvDiagTVInspection.h"

#include <string>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

CommandHandler* TVDiagnostic::create() {
    NV_TRACE(__func__);
    return new CommandTVDiagnostic(*this);
}

int32_t CommandTVDiagnostic::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "TV Inspection",
                    "This is Norvane TV inspection.", 4);
    return kResultDone;
}

int32_t CommandTVDiagnostic::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    // The HDR type is read first; the report lists it after the signal.
    const std::string hdr = norvane::NvGetTvHDRType();
    ZelJson::Value signal(ZelJson::objectValue);
    signal["Video Format"] = norvane::NvGetTvVideoFormat();
    signal["Audio Format"] = norvane::NvGetTvAudioFormat();
    signal["Colour Format"] = norvane::NvGetTvColourFormat();
    signal["Signal Level"] = norvane::NvGetTvSignalLevel();
    signal["Signal Quality"] = norvane::NvGetTvSignalQuality();
    signal["HDR"] = hdr;
    signal["Modulation Type"] = norvane::NvGetModulationType();
    signal["Channel Frequency"] = norvane::NvGetChannelFrequency();
    output["TV Signal"] = signal;
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
