// Every command's execute and get handlers with arbitrary input documents. The first byte picks
// the command (its remainder by the catalogue's size) and the handler (the quotient's lowest
// bit: execute or get); the rest is parsed as JSON, and text that is no JSON reaches the handler
// as a JSON string value.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <json/reader.h>

#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceInfo.h"
#include "FuzzTv.h"
#include "NorvaneExports.h"

namespace {

// The log tool's collection, a few kilobytes instead of hundreds, keeps the log download cheap.
constexpr const char* kLogBytes = "4096";

// Lives as long as the process, as the agent keeps it (never destroyed, so that the commands
// stay reachable until the leak check at exit).
std::vector<Zel::Sv::CommandBase*>& catalogue() {
    static auto* commands = new std::vector<Zel::Sv::CommandBase*>();
    return *commands;
}

ZelJson::Value inputDocument(const uint8_t* data, size_t size) {
    const char* text = reinterpret_cast<const char*>(data);
    ZelJson::Value document;
    const Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    if (!reader->parse(text, text + size, &document, nullptr)) {
        document = ZelJson::Value(std::string(text, size));
    }
    return document;
}

// The device-information command reads the operator id as its fixed-length parts and throws
// std::out_of_range for a shorter one, by design.
bool throwsForShortOperatorId(const Zel::Sv::CommandBase& command) {
    return command.getId() == norvane::Sv::kGetDeviceInfoTraits.id;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("TVSIM_LOG_BYTES", kLogBytes, 1);
    fuzzing::prepareTv();
    initialize();
    catalogue() = createCommandsExt();
    fuzzing::forgetRecords();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const size_t count = catalogue().size();
    Zel::Sv::CommandBase& command = *catalogue()[data[0] % count];
    const bool get = (data[0] / count) % 2 == 1;
    const ZelJson::Value input = inputDocument(data + 1, size - 1);

    // Made and deleted around each call, as the agent does.
    const std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    ZelJson::Value output(ZelJson::objectValue);
    try {
        if (get) {
            handler->getHandler(input, output);
        } else {
            handler->executeHandler(input, output);
        }
    } catch (const std::out_of_range&) {
        if (!throwsForShortOperatorId(command)) {
            throw;
        }
    }
    fuzzing::forgetRecords();
    return 0;
}
