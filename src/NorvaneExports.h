// The plug-in's entry points, resolved by the agent after it loads the library.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "zel/core/DeviceValues.h"
#include "zel/sv/CommandBase.h"

#define NV_EXPORT __attribute__((visibility("default")))

// The agent resolves the entry points by their unmangled names but calls them as C++ functions,
// so C++ return types are part of the interface.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif

extern "C" {

// Start-up: fills the callback table, builds the button map, starts the settings client,
// attaches the session observers and resets the session code shown by the TV.
NV_EXPORT void initialize();
NV_EXPORT std::vector<Zel::Sv::CommandBase*> createCommandsExt();
NV_EXPORT Zel::Core::DeviceValues* createDeviceValuesExt(const char* deviceType);
NV_EXPORT std::string GetZelPassword();
NV_EXPORT int32_t fillVideoBufferExt(unsigned char* buffer, uint32_t size);
NV_EXPORT int32_t getVideoWidthExt();
NV_EXPORT int32_t getVideoHeightExt();
NV_EXPORT std::string getGstreamerPathExt();
}

#ifdef __clang__
#pragma clang diagnostic pop
#endif
