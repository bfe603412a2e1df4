// What every support-view command shares: the constant slots of its descriptor class and the
// default handler operations. A command is a descriptor class (derived from Descriptor<traits>)
// and a handler class (derived from HandlerBase) in one unit.
#pragma once

#include <cstdint>
#include <string>

#include "zel/json/ZelJson.h"
#include "zel/sv/CommandBase.h"

namespace norvane {
namespace Sv {

constexpr int32_t kKindService = 1;
constexpr int32_t kKindDiagnostic = 2;
constexpr int32_t kKindTool = 3;

// Result codes of the handler operations.
constexpr int32_t kResultDone = 0;
constexpr int32_t kResultInvalidParameter = 3;
constexpr int32_t kResultNotImplemented = 5;
constexpr int32_t kResultOpenFailed = 6;
constexpr int32_t kResultReadFailed = 7;

struct CommandTraits {
    const char* id;
    int32_t kind;
    int32_t timeoutMs;
    int32_t handlerMask;
};

// The descriptor's constant slots, from traits fixed at compile time (the object itself holds
// nothing but its virtual table). The concrete class adds its constructor and create().
template <const CommandTraits& Traits>
class Descriptor : public Zel::Sv::CommandBase {
public:
    std::string getId() const override { return Traits.id; }
    int32_t getKind() const override { return Traits.kind; }
    std::string getAuxTextA() const override { return std::string(); }
    std::string getAuxTextB() const override { return std::string(); }
    int32_t getAuxNumber() const override { return 0; }
    int32_t getTimeoutMs() const override { return Traits.timeoutMs; }
    int32_t getHandlerMask() const override { return Traits.handlerMask; }
};

// The one shared default of each handler operation a command does not implement.
class HandlerBase : public Zel::Sv::CommandHandler {
public:
    using Zel::Sv::CommandHandler::CommandHandler;
    int32_t descriptionHandler(ZelJson::Value& description) override;
    int32_t getHandler(const ZelJson::Value& request, ZelJson::Value& reply) override;
    int32_t setHandler(const ZelJson::Value& request, ZelJson::Value& reply) override;
};

// The category of a command's descriptor.
constexpr const char* kToolCommands = "TOOL_COMMANDS";
constexpr const char* kDiagnosticCommands = "DIAGNOSTIC_COMMANDS";

// Writes "TYPE", "NAME", "DESCRIPTION" and "ORDER", in that order.
void describeCommand(ZelJson::Value& description, const char* type, const char* name,
                     const char* text, int32_t order);

}  // namespace Sv
}  // namespace norvane
