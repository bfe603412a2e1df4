// The identity file rewrite with arbitrary identity files: the input becomes id.json in a folder
// of the simulated TV, rewritten to new-id.json with the plug-in started as on the TV (the TV's
// access password and password generator come from the plug-in's own bridge).
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>

#include "DeviceAgent/SupportView/Project/NorvaneIdentityFile.h"
#include "FuzzTv.h"
#include "NorvaneExports.h"

namespace {

std::string input;
std::string output;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const std::string& root = fuzzing::prepareTv();
    initialize();
    input = root + "/id.json";
    output = root + "/new-id.json";
    fuzzing::forgetRecords();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    {
        std::ofstream file(input, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + input);
        }
    }
    NvCreateNewZelIdJson(input, output, "NV55UX8", "a4:3b:0c:11:22:33");
    fuzzing::forgetRecords();
    return 0;
}
