// printf-style formatting into a string of whatever length the result needs.
#pragma once

#include <cstdarg>
#include <string>

namespace norvane {

std::string formatText(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string formatTextV(const char* format, va_list arguments)
    __attribute__((format(printf, 1, 0)));

}  // namespace norvane
