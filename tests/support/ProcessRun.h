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

// Runs `program` with `arguments` (no shell), feeding `input` on its standard input.
ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input = "");

}  // namespace testing_support
