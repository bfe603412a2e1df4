#include "Progress.h"

#include <unistd.h>

namespace agentsim {

Progress::Progress(std::FILE* out, std::string what)
    : out_(out), what_(std::move(what)), terminal_(isatty(fileno(out)) != 0) {}

Progress::~Progress() {
    if (!finished_) {
        done("stopped");
    }
}

void Progress::tick(const std::string& detail) {
    ++ticks_;
    static const char kSpinner[] = "|/-\\";
    if (terminal_) {
        std::fprintf(out_, "\r  %c %s: %s\033[K", kSpinner[ticks_ % 4], what_.c_str(),
                     detail.c_str());
    } else {
        std::fprintf(out_, "  ... %s: %s\n", what_.c_str(), detail.c_str());
    }
    std::fflush(out_);
}

void Progress::done(const std::string& outcome) {
    finished_ = true;
    if (terminal_) {
        std::fprintf(out_, "\r  %s: %s\033[K\n", what_.c_str(), outcome.c_str());
    } else {
        std::fprintf(out_, "  %s: %s\n", what_.c_str(), outcome.c_str());
    }
    std::fflush(out_);
}

}  // namespace agentsim
