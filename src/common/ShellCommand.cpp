#include "common/ShellCommand.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "common/ConsoleLog.h"

namespace norvane {
namespace {

// The whole command, for the log line of one that does not fit.
__attribute__((format(printf, 1, 0))) std::string formatWhole(const char* format,
                                                              va_list arguments) {
    va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    if (length < 0) {
        return format;
    }
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

}  // namespace

int runShellCommand(const char* format, ...) {
    char command[kShellCommandCapacity] = {};
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(command, sizeof command, format, arguments);
    va_end(arguments);
    const bool fits = length >= 0 && static_cast<size_t>(length) < sizeof command;
    if (!fits) {
        consoleLog(kLogError, "Shell command longer than %zu bytes, not run: %s\n",
                   sizeof command - 1, formatWhole(format, again).c_str());
    }
    va_end(again);
    return fits ? std::system(command) : -1;
}

}  // namespace norvane
