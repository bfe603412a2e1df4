#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvToolSourceChange"

#include "DeviceAgent/SupportView/Project/CommandNvToolSourceChange.h"

#include <optional>
#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

constexpr const char* kSourceInput = "SOURCE_LIST";

// The platform lists each source as its name followed by its alias; the agent picks by name.
std::vector<std::string> sourceNames() {
    const std::vector<std::string> pairs = labelList(norvane::NvGetVStrSourceList);
    std::vector<std::string> names;
    for (size_t at = 0; at < pairs.size(); at += 2) {
        names.push_back(pairs[at]);
    }
    return names;
}

}  // namespace

SourceChangeTool::SourceChangeTool() {
    NV_TRACE(__func__);
}

CommandHandler* SourceChangeTool::create() {
    NV_TRACE(__func__);
    return new CommandSourceChange(*this);
}

int32_t CommandSourceChange::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    ZelJson::Value inputs = emptyArray();
    inputs.append(InputBuilder(kSourceInput, "Change Source", "change source", -1, kInputList)
                      .defaultValue("TV")
                      .values(sourceNames())
                      .shown(false)
                      .build());
    ZelJson::Value outputs = emptyArray();
    outputs.append(
        InputBuilder("RESPONSE_DATA", "Result", "Result of command", -1, kInputJson).build());
    describeTool(description, "Change Source", "Change Source Tool.", 1, inputs, outputs);
    return kResultDone;
}

int32_t CommandSourceChange::executeHandler(const ZelJson::Value& input, ZelJson::Value& output) {
    NV_TRACE(__func__);
    const std::optional<std::string> source = stringMember(input, kSourceInput);
    if (!source) {
        NV_HOST_LOG(norvane::kSeverityError, "%s", kInvalidParameterMessage);
        return kResultDone;
    }
    norvane::NvSetSource(*source);
    output[kSourceInput] = *source;
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
