#include "common/TextFormat.h"

#include <cstdio>

namespace norvane {

std::string formatTextV(const char* format, va_list arguments) {
    va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    if (length <= 0) {
        return std::string();
    }
    std::string text(static_cast<size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::string formatText(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatTextV(format, arguments);
    va_end(arguments);
    return text;
}

}  // namespace norvane
