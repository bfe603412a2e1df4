// Waiting, in real time, for what other threads or processes do.
#pragma once

#include <chrono>
#include <functional>

namespace testing_support {

// Checks `condition` every few real milliseconds; false when it still fails after `patience`.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds patience = std::chrono::seconds(5));

}  // namespace testing_support
