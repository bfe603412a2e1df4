#include "DeviceNvValues.h"

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"

namespace norvane {
namespace Core {

DeviceNvValues::DeviceNvValues(const char* deviceType) : Zel::Core::DeviceValues(deviceType) {
    registerValues();
}

DeviceNvValues::~DeviceNvValues() = default;

// Read anew for every object: the TV may have changed since the last one was made.
void DeviceNvValues::registerValues() {
    deviceModel_ = NvGetZelSubModel();
    platform_ = NvGetPlatformMode();
}

}  // namespace Core
}  // namespace norvane
