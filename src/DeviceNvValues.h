// The device values the agent reads: model and platform, filled from the TV when made.
#pragma once

#include "zel/core/DeviceValues.h"

namespace norvane {
namespace Core {

class DeviceNvValues : public Zel::Core::DeviceValues {
public:
    explicit DeviceNvValues(const char* deviceType);
    ~DeviceNvValues() override;

private:
    void registerValues();
};

}  // namespace Core
}  // namespace norvane
