#include "DeviceAgent/SupportView/Project/InspectionReports.h"

#include <cstdarg>
#include <cstdio>

namespace norvane {
namespace Sv {

const char* verdict(bool passed) {
    return passed ? "OK" : "NG";
}

std::string formatText(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    if (length > 0) {
        std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    }
    va_end(arguments);
    return text;
}

}  // namespace Sv
}  // namespace norvane
