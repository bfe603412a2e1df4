#include "common/ConsoleLog.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace norvane {

int consoleLog(int level, const char* format, ...) {
    const char* opening = level == kLogInfo ? "\t<-- " : "\t<** ";
    const char* closing = level == kLogInfo ? " -->\n" : " **>\n";
    const size_t length = std::strlen(opening) + std::strlen(format) + std::strlen(closing) + 1;
    char* framed = static_cast<char*>(std::malloc(length));
    if (framed == nullptr) {
        return 0;
    }
    std::snprintf(framed, length, "%s%s%s", opening, format, closing);
    va_list arguments;
    va_start(arguments, format);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::vprintf(framed, arguments);
#pragma GCC diagnostic pop
    va_end(arguments);
    std::free(framed);
    return 0;
}

}  // namespace norvane
