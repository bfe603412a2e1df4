// Every shell command of the plug-in runs through here.
#pragma once

#include <cstddef>

namespace norvane {

// Room for one command, its terminating zero included.
constexpr size_t kShellCommandCapacity = 128;

// Formats the command into a zero-filled buffer of kShellCommandCapacity bytes and runs it with
// system(), returning system()'s status as it stands. A command that does not fit is logged and
// not run, since a cut command could act on other files than intended; the result is then -1.
int runShellCommand(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace norvane
