// The agent's clock as it reports it to the support service.
#pragma once

#include <cstdint>
#include <string>

namespace Zel {
namespace Sv {

class Time {
public:
    static std::string GetCurrentDateTime();
    static int64_t GetUptime();
};

}  // namespace Sv
}  // namespace Zel
