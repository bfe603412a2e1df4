// The agent's description of the device it runs on. Platform plug-ins derive from it and fill
// in the values they know.
#pragma once

#include <string>

namespace Zel {
namespace Core {

class DeviceValues {
public:
    explicit DeviceValues(const char* deviceType);
    virtual ~DeviceValues();
    DeviceValues(const DeviceValues&) = delete;
    DeviceValues& operator=(const DeviceValues&) = delete;

    const std::string& getDeviceType() const { return deviceType_; }
    const std::string& getDeviceModel() const { return deviceModel_; }
    const std::string& getPlatform() const { return platform_; }

protected:
    std::string deviceModel_;
    std::string platform_;

private:
    std::string deviceType_;
};

}  // namespace Core
}  // namespace Zel
