#include "FuzzTv.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "tvsim/TvSim.h"
#include "zelsim/HostSim.h"

namespace fuzzing {
namespace {

namespace fs = std::filesystem;

constexpr double kTimeScale = 1000.0;

// A short folder name: the plug-in's shell commands name files below the root twice and must
// still fit the TV's fixed command buffer, or they are not run.
std::string makeRoot() {
    char pattern[] = "/tmp/norvane-fuzz-XXXXXX";
    if (mkdtemp(pattern) == nullptr) {
        throw std::runtime_error("cannot create the TV root in /tmp");
    }
    return pattern;
}

std::string& root() {
    static std::string folder;
    return folder;
}

void removeRoot() {
    std::error_code ignored;
    fs::remove_all(root(), ignored);
}

}  // namespace

const std::string& prepareTv() {
    if (root().empty()) {
        root() = makeRoot();
        std::atexit(removeRoot);
        tvsim::Tv& tv = tvsim::Tv::instance();
        tv.setFilesystemRoot(root());
        tv.setTimeScale(kTimeScale);
        tv.loadDefaultProfile();
        zelsim::reset();
    }
    return root();
}

void forgetRecords() {
    zelsim::takeLogLines();
    zelsim::takeTraceEvents();
    zelsim::takeCalls();
    zelsim::takeMessages();
    tvsim::Tv::instance().takeJournal();
}

}  // namespace fuzzing
