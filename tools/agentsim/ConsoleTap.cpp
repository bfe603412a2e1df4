#include "ConsoleTap.h"

#include "ConsoleLines.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace agentsim {

ConsoleTap::ConsoleTap() {
    std::fflush(stdout);
    const int realStdout = dup(STDOUT_FILENO);
    out_ = fdopen(realStdout, "w");
    char name[] = "/tmp/agentsim-console-XXXXXX";
    captureFile_ = mkstemp(name);
    if (out_ == nullptr || captureFile_ < 0) {
        throw std::runtime_error("agentsim: cannot capture the plug-in's console");
    }
    unlink(name);
    dup2(captureFile_, STDOUT_FILENO);
}

ConsoleTap::~ConsoleTap() {
    std::fflush(stdout);
    std::fflush(out_);
    dup2(fileno(out_), STDOUT_FILENO);
    std::fclose(out_);
    close(captureFile_);
}

std::vector<std::string> ConsoleTap::takeLines() {
    std::fflush(stdout);
    char buffer[8192];
    ssize_t count;
    while ((count = pread(captureFile_, buffer, sizeof buffer, offset_)) > 0) {
        pending_.append(buffer, static_cast<size_t>(count));
        offset_ += count;
    }
    return simconsole::takeFramedLines(pending_);
}

}  // namespace agentsim
