#include "TemporaryFiles.h"

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

namespace agentsim {
namespace {

constexpr int kHandledSignals[] = {SIGHUP, SIGINT, SIGPIPE, SIGTERM};
// A folder the plug-in is still writing into may not empty at the first go.
constexpr int kRemovalTries = 3;

// What is still to be removed. Never destroyed: the exit handler and the signal thread use it
// while the process ends.
struct Registry {
    std::mutex mutex;
    std::set<std::string> paths;
};

void removeFolder(const std::string& path) {
    std::error_code error;
    for (int attempt = 0; attempt < kRemovalTries; ++attempt) {
        std::filesystem::remove_all(path, error);
        if (!error) {
            return;
        }
    }
}

// Caller holds the registry's mutex.
void removeRegistered(Registry& registry) {
    for (const std::string& path : registry.paths) {
        removeFolder(path);
    }
    registry.paths.clear();
}

Registry& registry() {
    static Registry* const instance = [] {
        auto* made = new Registry;
        std::atexit([] {
            Registry& current = registry();
            std::lock_guard<std::mutex> lock(current.mutex);
            removeRegistered(current);
        });
        return made;
    }();
    return *instance;
}

// The handler only passes the signal on: removing files is not safe inside a handler.
int signalPipe[2] = {-1, -1};

extern "C" void passSignalOn(int number) {
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(number);
    if (write(signalPipe[1], &byte, 1) < 0) {
        // Full: a signal is on its way already.
    }
    errno = savedErrno;
}

// The thread that cleans up after a signal. It keeps the registry locked to the end, so that
// nothing new is made meanwhile.
void cleanUpAfterSignal() {
    unsigned char number = 0;
    while (read(signalPipe[0], &number, 1) < 0 && errno == EINTR) {
    }
    Registry& current = registry();
    current.mutex.lock();
    removeRegistered(current);
    _exit(128 + number);
}

}  // namespace

void removeTemporariesOnSignals() {
    registry();
    if (pipe2(signalPipe, O_CLOEXEC) != 0 ||
        fcntl(signalPipe[1], F_SETFL, fcntl(signalPipe[1], F_GETFL) | O_NONBLOCK) != 0) {
        throw std::runtime_error(std::string("agentsim: cannot prepare for signals: ") +
                                 std::strerror(errno));
    }
    // The cleaning thread takes no signal itself: it must not be the one interrupted.
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &previous);
    std::thread(cleanUpAfterSignal).detach();
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);

    struct sigaction action {};
    action.sa_handler = passSignalOn;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : kHandledSignals) {
        sigaction(number, &action, nullptr);
    }
}

std::string temporaryFolder() {
    const char* folder = std::getenv("TMPDIR");
    if (folder != nullptr && folder[0] == '/' && std::filesystem::is_directory(folder)) {
        return folder;
    }
    return "/tmp";
}

TemporaryFolder::TemporaryFolder(const std::string& prefix) {
    std::string pattern = prefix + "XXXXXX";
    Registry& current = registry();
    std::lock_guard<std::mutex> lock(current.mutex);
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("agentsim: cannot create a folder " + prefix +
                                 "...: " + std::strerror(errno));
    }
    path_ = pattern;
    current.paths.insert(path_);
}

TemporaryFolder::~TemporaryFolder() {
    Registry& current = registry();
    std::lock_guard<std::mutex> lock(current.mutex);
    removeFolder(path_);
    current.paths.erase(path_);
}

int openNamelessFile(const std::string& prefix) {
    std::string pattern = prefix + "XXXXXX";
    Registry& current = registry();
    std::lock_guard<std::mutex> lock(current.mutex);
    const int file = mkostemp(pattern.data(), O_CLOEXEC);
    if (file < 0) {
        throw std::runtime_error("agentsim: cannot create a file " + prefix +
                                 "...: " + std::strerror(errno));
    }
    unlink(pattern.c_str());
    return file;
}

}  // namespace agentsim
