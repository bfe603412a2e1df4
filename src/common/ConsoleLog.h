// The plug-in's console log, used by the bridge and the session controller. Level 1 is
// information, any other level an error.
#pragma once

namespace norvane {

constexpr int kLogInfo = 1;
constexpr int kLogError = 2;

// Prints `format` with its arguments to standard output, framed by level:
// "\t<-- text -->\n" for information, "\t<** text **>\n" otherwise. Always returns 0; prints
// nothing when the framed format cannot be allocated.
int consoleLog(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));

}  // namespace norvane
