#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagPictureInspection"

#include "DeviceAgent/SupportView/Project/CommandNvDiagPictureInspection.h"

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

constexpr const char* kResponseId = "RESPONSE_DATA";

}  // namespace

CommandHandler* PictureDiagnostic::create() {
    NV_TRACE(__func__);
    return new CommandPictureDiagnostic(*this);
}

int32_t CommandPictureDiagnostic::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "Picture Inspection",
                    "This is Norvane picture inspection.", 2);
    ZelJson::Value outputs(ZelJson::arrayValue);
    outputs.append(
        InputBuilder(kResponseId, "Result", "Result of command", -1, kInputText).build());
    description["OUTPUTS"] = outputs;
    return kResultDone;
}

int32_t CommandPictureDiagnostic::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    norvane::NvPictureInspectionNotify();
    output["ID"] = kResponseId;
    output["TYPE"] = kInputText;
    output["DATA"] =
        "Please return to the Tools->Images Diagnostic Tab to confirm the diagnosis result.";
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
