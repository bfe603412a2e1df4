// What the diagnostic commands share when they write their reports.
#pragma once

#include <string>

#include "common/TextFormat.h"

namespace norvane {
namespace Sv {

// The diagnostics' pass and fail words, "OK" and "NG".
const char* verdict(bool passed);

}  // namespace Sv
}  // namespace norvane
