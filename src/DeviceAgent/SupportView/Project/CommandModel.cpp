#include "DeviceAgent/SupportView/Project/CommandModel.h"

namespace norvane {
namespace Sv {

int32_t HandlerBase::descriptionHandler(ZelJson::Value&) { return kResultNotImplemented; }

int32_t HandlerBase::getHandler(const ZelJson::Value&, ZelJson::Value&) {
    return kResultNotImplemented;
}

int32_t HandlerBase::setHandler(const ZelJson::Value&, ZelJson::Value&) {
    return kResultNotImplemented;
}

void describeCommand(ZelJson::Value& description, const char* type, const char* name,
                     const char* text, int32_t order) {
    description["TYPE"] = type;
    description["NAME"] = name;
    description["DESCRIPTION"] = text;
    description["ORDER"] = order;
}

}  // namespace Sv
}  // namespace norvane
