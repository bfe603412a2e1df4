#include "support/ProcessRun.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

extern char** environ;

namespace testing_support {
namespace {

std::string temporaryFile(const std::string& content) {
    char name[] = "/tmp/norvane-process-XXXXXX";
    const int descriptor = mkstemp(name);
    if (descriptor < 0) {
        throw std::runtime_error("cannot create a temporary file");
    }
    close(descriptor);
    std::ofstream(name, std::ios::binary) << content;
    return name;
}

std::string slurp(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

CommandLine::CommandLine(const std::string& program, const std::vector<std::string>& arguments) {
    // A test running under user-mode emulation starts the target's programs through the same
    // emulator (checks/arm.sh names it; the emulator finds the target's libraries itself).
    const char* emulator = std::getenv("NORVANE_TEST_EMULATOR");
    if (emulator != nullptr && *emulator != '\0') {
        words_.emplace_back(emulator);
    }
    words_.push_back(program);
    words_.insert(words_.end(), arguments.begin(), arguments.end());
    for (std::string& word : words_) {
        pointers_.push_back(word.data());
    }
    pointers_.push_back(nullptr);
}

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input) {
    const std::string inputPath = temporaryFile(input);
    const std::string outPath = temporaryFile("");
    const std::string errPath = temporaryFile("");

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, inputPath.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath.c_str(), O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath.c_str(), O_WRONLY, 0);

    const CommandLine command(program, arguments);
    ProcessResult result;
    pid_t child = 0;
    if (posix_spawn(&child, command.argv()[0], &actions, nullptr, command.argv(), environ) == 0) {
        int status = 0;
        waitpid(child, &status, 0);
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    posix_spawn_file_actions_destroy(&actions);
    result.out = slurp(outPath);
    result.err = slurp(errPath);
    for (const std::string& path : {inputPath, outPath, errPath}) {
        std::remove(path.c_str());
    }
    return result;
}

}  // namespace testing_support
