// A program that runs beside a test, for tests that talk to it while it runs: its standard output
// is read line by line as it comes, its standard error kept in a file.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace testing_support {

class BackgroundProcess {
public:
    // Starts `program` (through the test emulator, when there is one). Throws std::runtime_error.
    BackgroundProcess(const std::string& program, const std::vector<std::string>& arguments);
    // Kills the program if it still runs.
    ~BackgroundProcess();
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;

    // Reads output until a line holds `text`; returns that line, or nothing when the output ends
    // or `patience` runs out first.
    std::optional<std::string> waitForLine(const std::string& text,
                                           std::chrono::milliseconds patience);
    // Everything read from standard output so far.
    const std::string& output() const { return output_; }
    std::string errors() const;

    void signal(int number);
    // The exit status (128 + the signal for a killed program); nothing while it still runs after
    // `patience`.
    std::optional<int> wait(std::chrono::milliseconds patience);

private:
    // Appends what the program printed within `patience`; false when nothing came.
    bool readOutput(std::chrono::milliseconds patience);

    pid_t pid_ = -1;
    int outputPipe_ = -1;
    std::string errorPath_;
    std::string output_;
    size_t scanned_ = 0;
    bool outputEnded_ = false;
    std::optional<int> status_;
};

}  // namespace testing_support
