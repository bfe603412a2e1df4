#include "support/StdoutCapture.h"

#include "ConsoleLines.h"

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <stdexcept>

namespace testing_support {
namespace {

// Google Test reports failures on standard output, which a capture would swallow; repeat them
// on standard error.
class FailuresToStderr : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed()) {
            std::fprintf(stderr, "%s:%d: Failure\n%s\n",
                         result.file_name() ? result.file_name() : "unknown", result.line_number(),
                         result.message());
        }
    }
};

void reportFailuresOnStderr() {
    static std::once_flag once;
    std::call_once(
        once, [] { testing::UnitTest::GetInstance()->listeners().Append(new FailuresToStderr); });
}

}  // namespace

StdoutCapture::StdoutCapture() {
    reportFailuresOnStderr();
    std::fflush(stdout);
    char name[] = "/tmp/norvane-stdout-XXXXXX";
    captureFile_ = mkstemp(name);
    if (captureFile_ < 0) {
        throw std::runtime_error("cannot create the capture file");
    }
    unlink(name);
    savedStdout_ = dup(STDOUT_FILENO);
    dup2(captureFile_, STDOUT_FILENO);
}

StdoutCapture::~StdoutCapture() {
    std::fflush(stdout);
    dup2(savedStdout_, STDOUT_FILENO);
    close(savedStdout_);
    close(captureFile_);
}

std::string StdoutCapture::take() {
    std::fflush(stdout);
    std::string text;
    char buffer[4096];
    ssize_t count;
    while ((count = pread(captureFile_, buffer, sizeof buffer, offset_)) > 0) {
        text.append(buffer, static_cast<size_t>(count));
        offset_ += count;
    }
    return text;
}

std::vector<std::string> splitConsoleLines(const std::string& output) {
    std::string pending = output;
    std::vector<std::string> lines = simconsole::takeFramedLines(pending);
    if (!pending.empty()) {
        lines.push_back(pending);
    }
    return lines;
}

}  // namespace testing_support
