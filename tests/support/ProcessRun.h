// Runs a program to completion and collects what it printed.
#pragma once

#include <string>
#include <vector>

namespace testing_support {

struct ProcessResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// The argument vector that starts `program` with `arguments`: under user-mode emulation (the
// NORVANE_TEST_EMULATOR variable names the emulator) the target's programs start through it.
class CommandLine {
public:
    CommandLine(const std::string& program, const std::vector<std::string>& arguments);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    // Null-terminated, for posix_spawn; argv()[0] is the file to run.
    char* const* argv() const { return pointers_.data(); }

private:
    std::vector<std::string> words_;
    std::vector<char*> pointers_;
};

// Runs `program` with `arguments` (no shell), feeding `input` on its standard input.
ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input = "");

}  // namespace testing_support
