// Support-view commands: a descriptor object per command and handler objects made on demand.
// The agent calls the virtual operations in the slot order declared here.
#pragma once

#include <cstdint>
#include <string>

#include "zel/json/ZelJson.h"

namespace Zel {
namespace Sv {

class CommandHandler;

class CommandBase {
public:
    CommandBase() = default;
    virtual ~CommandBase();
    CommandBase(const CommandBase&) = delete;
    CommandBase& operator=(const CommandBase&) = delete;

    virtual std::string getId() const = 0;
    virtual int32_t getKind() const = 0;
    virtual std::string getAuxTextA() const = 0;
    virtual std::string getAuxTextB() const = 0;
    virtual int32_t getAuxNumber() const = 0;
    virtual int32_t getTimeoutMs() const = 0;
    virtual int32_t getHandlerMask() const = 0;
    virtual CommandHandler* create() = 0;
};

class CommandHandler {
public:
    explicit CommandHandler(CommandBase& command);
    virtual ~CommandHandler();
    CommandHandler(const CommandHandler&) = delete;
    CommandHandler& operator=(const CommandHandler&) = delete;

    virtual int32_t descriptionHandler(ZelJson::Value& description) = 0;
    virtual int32_t executeHandler(const ZelJson::Value& input, ZelJson::Value& output) = 0;
    virtual int32_t getHandler(const ZelJson::Value& request, ZelJson::Value& reply) = 0;
    virtual int32_t setHandler(const ZelJson::Value& request, ZelJson::Value& reply) = 0;

    CommandBase& command() const { return command_; }

private:
    CommandBase& command_;
};

// Bits of CommandBase::getHandlerMask().
constexpr int32_t kHandlesExecute = 1;
constexpr int32_t kHandlesGet = 2;
constexpr int32_t kHandlesDescription = 4;

}  // namespace Sv
}  // namespace Zel
