#include "zel/core/DeviceValues.h"

namespace Zel {
namespace Core {

// The agent's own answers until a plug-in fills in what it knows.
DeviceValues::DeviceValues(const char* deviceType)
    : deviceModel_("unknown-model"),
      platform_("unknown-platform"),
      deviceType_(deviceType ? deviceType : "") {}

DeviceValues::~DeviceValues() = default;

}  // namespace Core
}  // namespace Zel
