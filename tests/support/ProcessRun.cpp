#include "support/ProcessRun.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
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

// The test's own environment with `added` put over it.
std::vector<std::string> environmentWith(const std::vector<std::string>& added) {
    std::map<std::string, std::string> byName;
    const auto put = [&](const std::string& entry) {
        byName[entry.substr(0, entry.find('='))] = entry;
    };
    for (char** entry = environ; *entry != nullptr; ++entry) {
        put(*entry);
    }
    for (const std::string& entry : added) {
        put(entry);
    }
    std::vector<std::string> entries;
    for (const auto& [name, entry] : byName) {
        entries.push_back(entry);
    }
    return entries;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

RunningProcess::RunningProcess(const std::string& program,
                               const std::vector<std::string>& arguments, const ProcessSetup& setup)
    : inputPath_(temporaryFile(setup.input)),
      outPath_(setup.outputPath.empty() ? temporaryFile("") : setup.outputPath),
      errPath_(temporaryFile("")),
      outputIsOurs_(setup.outputPath.empty()) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, inputPath_.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath_.c_str(), O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath_.c_str(), O_WRONLY, 0);
    if (!setup.folder.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, setup.folder.c_str());
    }

    std::vector<std::string> words;
    // A test running under user-mode emulation starts the target's programs through the same
    // emulator (checks/arm.sh names it; the emulator finds the target's libraries itself).
    const char* emulator = std::getenv("NORVANE_TEST_EMULATOR");
    if (emulator != nullptr && *emulator != '\0') {
        words.push_back(emulator);
    }
    words.push_back(program);
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv = pointersTo(words);
    std::vector<std::string> environment = environmentWith(setup.environment);
    std::vector<char*> envp = pointersTo(environment);

    if (posix_spawn(&child_, argv.front(), &actions, nullptr, argv.data(), envp.data()) != 0) {
        child_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
}

RunningProcess::~RunningProcess() {
    if (child_ > 0) {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    for (const std::string& path : {inputPath_, errPath_}) {
        std::remove(path.c_str());
    }
    if (outputIsOurs_) {
        std::remove(outPath_.c_str());
    }
}

std::string RunningProcess::outputSoFar() const {
    return outputIsOurs_ ? slurp(outPath_) : std::string();
}

void RunningProcess::signal(int number) const {
    if (child_ > 0) {
        kill(child_, number);
    }
}

ProcessResult RunningProcess::wait() {
    ProcessResult result;
    if (child_ > 0) {
        int status = 0;
        waitpid(child_, &status, 0);
        child_ = -1;
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    result.out = outputSoFar();
    result.err = slurp(errPath_);
    return result;
}

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup) {
    return RunningProcess(program, arguments, setup).wait();
}

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input) {
    ProcessSetup setup;
    setup.input = input;
    return runProcess(program, arguments, setup);
}

}  // namespace testing_support
