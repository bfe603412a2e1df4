#include "ConsoleTap.h"

#include "ConsoleLines.h"
#include "TemporaryFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace agentsim {
namespace {

// The capture file is emptied once it holds this much.
constexpr off_t kRestartAfterBytes = 1024 * 1024;
// Text without a closing frame is kept as one line once it grows this long.
constexpr size_t kLongestPending = 64 * 1024;

}  // namespace

ConsoleTap::ConsoleTap()
    : captureFile_(openNamelessFile(temporaryFolder() + "/agentsim-console-")) {
    std::fflush(stdout);
    const int realStdout = dup(STDOUT_FILENO);
    out_ = realStdout >= 0 ? fdopen(realStdout, "w") : nullptr;
    if (out_ == nullptr) {
        close(captureFile_);
        throw std::runtime_error("agentsim: cannot capture the plug-in's console");
    }
    dup2(captureFile_, STDOUT_FILENO);
}

ConsoleTap::~ConsoleTap() {
    std::fflush(stdout);
    std::fflush(out_);
    dup2(fileno(out_), STDOUT_FILENO);
    std::fclose(out_);
    close(captureFile_);
}

void ConsoleTap::collect() {
    // The plug-in prints through stdout's stream; holding it keeps the file still while it is
    // read and emptied. (A shell tool the plug-in runs at this very moment writes past the
    // stream; the little of it that the emptying could meet is given up.)
    flockfile(stdout);
    std::fflush(stdout);
    char buffer[8192];
    ssize_t count;
    while ((count = pread(captureFile_, buffer, sizeof buffer, offset_)) > 0) {
        pending_.append(buffer, static_cast<size_t>(count));
        offset_ += count;
        for (std::string& line : simconsole::takeFramedLines(pending_)) {
            lines_.add(std::move(line));
        }
        if (pending_.size() > kLongestPending) {
            lines_.add(std::move(pending_));
            pending_.clear();
        }
    }
    if (offset_ >= kRestartAfterBytes && ftruncate(captureFile_, 0) == 0) {
        // The standard output shares this file's offset.
        lseek(captureFile_, 0, SEEK_SET);
        offset_ = 0;
    }
    funlockfile(stdout);
}

std::vector<std::string> ConsoleTap::takeLines(uint64_t* dropped) {
    collect();
    return lines_.take(dropped);
}

}  // namespace agentsim
