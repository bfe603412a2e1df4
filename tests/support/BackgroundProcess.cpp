#include "support/BackgroundProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "support/ProcessRun.h"

extern char** environ;

namespace testing_support {
namespace {

using Clock = std::chrono::steady_clock;

int statusOf(int raw) {
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

}  // namespace

BackgroundProcess::BackgroundProcess(const std::string& program,
                                     const std::vector<std::string>& arguments) {
    char errorName[] = "/tmp/norvane-process-err-XXXXXX";
    const int errorFile = mkstemp(errorName);
    int pipeEnds[2];
    if (errorFile < 0 || pipe(pipeEnds) != 0) {
        throw std::runtime_error("cannot set up a background program's output");
    }
    errorPath_ = errorName;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errorFile, STDERR_FILENO);
    posix_spawn_file_actions_addclose(&actions, pipeEnds[0]);
    const CommandLine command(program, arguments);
    const int spawned =
        posix_spawn(&pid_, command.argv()[0], &actions, nullptr, command.argv(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipeEnds[1]);
    close(errorFile);
    outputPipe_ = pipeEnds[0];
    if (spawned != 0) {
        pid_ = -1;
        throw std::runtime_error("cannot start " + program);
    }
}

BackgroundProcess::~BackgroundProcess() {
    if (pid_ > 0 && !status_) {
        kill(pid_, SIGKILL);
        int raw = 0;
        waitpid(pid_, &raw, 0);
    }
    if (outputPipe_ >= 0) {
        close(outputPipe_);
    }
    std::remove(errorPath_.c_str());
}

std::optional<std::string> BackgroundProcess::waitForLine(const std::string& text,
                                                          std::chrono::milliseconds patience) {
    const Clock::time_point deadline = Clock::now() + patience;
    for (;;) {
        for (size_t end; (end = output_.find('\n', scanned_)) != std::string::npos;) {
            const std::string line = output_.substr(scanned_, end - scanned_);
            scanned_ = end + 1;
            if (line.find(text) != std::string::npos) {
                return line;
            }
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0 || outputEnded_ || !readOutput(left)) {
            return std::nullopt;
        }
    }
}

bool BackgroundProcess::readOutput(std::chrono::milliseconds patience) {
    pollfd ready{outputPipe_, POLLIN, 0};
    if (poll(&ready, 1, static_cast<int>(patience.count())) <= 0) {
        return false;
    }
    char buffer[4096];
    const ssize_t count = read(outputPipe_, buffer, sizeof buffer);
    if (count <= 0) {
        outputEnded_ = true;
        return false;
    }
    output_.append(buffer, static_cast<size_t>(count));
    return true;
}

std::string BackgroundProcess::errors() const {
    std::ifstream file(errorPath_, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void BackgroundProcess::signal(int number) {
    if (pid_ > 0 && !status_) {
        kill(pid_, number);
    }
}

std::optional<int> BackgroundProcess::wait(std::chrono::milliseconds patience) {
    const Clock::time_point deadline = Clock::now() + patience;
    while (!status_) {
        int raw = 0;
        const pid_t done = waitpid(pid_, &raw, WNOHANG);
        if (done == pid_) {
            status_ = statusOf(raw);
        } else if (Clock::now() >= deadline) {
            break;
        } else {
            // Reading what the program still prints keeps it from blocking on a full pipe.
            if (outputEnded_ || !readOutput(std::chrono::milliseconds(10))) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
        }
    }
    return status_;
}

}  // namespace testing_support
