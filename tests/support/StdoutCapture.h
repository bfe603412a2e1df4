// Captures what the process writes to standard output (the plug-in's console log) while alive.
#pragma once

#include <string>
#include <vector>

namespace testing_support {

class StdoutCapture {
public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // Everything printed since the previous take.
    std::string take();

private:
    int savedStdout_ = -1;
    int captureFile_ = -1;
    long offset_ = 0;
};

// Splits captured console output into the lines each console-log call printed, framing
// included ("\t<-- ... -->\n", "\t<** ... **>\n").
std::vector<std::string> splitConsoleLines(const std::string& output);

}  // namespace testing_support
