// The agent's support-view services used by plug-ins.
#pragma once

#include <cstdint>

namespace Zel {
namespace Sv {

class SupportViewManager {
public:
    static SupportViewManager& Instance();

    // Measures the connection to the support service in megabits per second. Returns 0 on
    // success; on failure the two values are left as they were.
    int32_t runSpeedTest(double& up, double& down);

private:
    SupportViewManager() = default;
};

}  // namespace Sv
}  // namespace Zel
