// The entry points the agent resolves in a platform plug-in after loading it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Zel {
namespace Core {
class DeviceValues;
}
namespace Sv {
class CommandBase;
}
}  // namespace Zel

namespace ZelPlugin {

using InitializeFn = void (*)();
using CreateCommandsFn = std::vector<Zel::Sv::CommandBase*> (*)();
using CreateDeviceValuesFn = Zel::Core::DeviceValues* (*)(const char*);
using GetPasswordFn = std::string (*)();
using FillVideoBufferFn = int32_t (*)(unsigned char*, uint32_t);
using GetVideoDimensionFn = int32_t (*)();
using GetGstreamerPathFn = std::string (*)();
// Provisioning: rewrites an identity file for this device.
using CreateIdJsonFn = int32_t (*)(const std::string&, const std::string&, const char*,
                                   const char*);

}  // namespace ZelPlugin
