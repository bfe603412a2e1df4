#include "common/ShellCommand.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "common/ConsoleLog.h"
#include "common/TextFormat.h"

namespace norvane {
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
                   sizeof command - 1, formatTextV(format, again).c_str());
    }
    va_end(again);
    return fits ? std::system(command) : -1;
}

}  // namespace norvane
