// Runs a program and collects what it printed: to completion, or started in the background.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace testing_support {

struct ProcessResult {
    int exitCode = -1;  // 128 + the signal's number when a signal ended it
    std::string out;
    std::string err;
};

struct ProcessSetup {
    std::string input;                     // fed on its standard input
    std::vector<std::string> environment;  // "NAME=value" added to (or replacing) the test's own
    std::string folder;                    // its working folder; empty: the test's own
    std::string outputPath;                // its standard output; empty: a file read afterwards
};

// A program started with `arguments` (no shell). Under user-mode emulation (the Arm check sets
// NORVANE_TEST_EMULATOR) it runs through the emulator.
class RunningProcess {
public:
    RunningProcess(const std::string& program, const std::vector<std::string>& arguments,
                   const ProcessSetup& setup = {});
    // Kills the program if it still runs, and removes the files of its input and output.
    ~RunningProcess();
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;

    // What it has written to its standard output so far.
    std::string outputSoFar() const;
    void signal(int number) const;
    // Waits for it to end.
    ProcessResult wait();

private:
    std::string inputPath_;
    std::string outPath_;
    std::string errPath_;
    bool outputIsOurs_ = true;
    pid_t child_ = -1;
};

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup);
ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input = "");

}  // namespace testing_support
