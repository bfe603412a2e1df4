// What the inspection commands share when they write their reports.
#pragma once

#include <string>

namespace norvane {
namespace Sv {

// The inspections' pass and fail words, "OK" and "NG".
const char* verdict(bool passed);

// printf-style formatting into a string of whatever length the result needs.
std::string formatText(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace Sv
}  // namespace norvane
