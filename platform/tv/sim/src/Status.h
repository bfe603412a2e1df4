// Statuses the simulated middleware returns, as the real one does: 0 for success, a positive
// code when an operation is refused, a negative one when a key cannot be connected at all.
#pragma once

#include <cstdint>

namespace tvsim {
namespace status {

constexpr int32_t kOk = 0;
constexpr int32_t kFailed = 1;        // the TV could not carry the operation out
constexpr int32_t kBadArguments = 3;  // an action's argument list is incomplete or malformed
constexpr int32_t kWrongType = 4;     // the operation does not match the key's type
constexpr int32_t kMalformedKey = -2;

}  // namespace status
}  // namespace tvsim
