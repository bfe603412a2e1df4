#include "SimulatedTv.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "tvsim/TvSim.h"

namespace agentsim {

namespace fs = std::filesystem;

SimulatedTv::SimulatedTv(const TvOptions& options) {
    if (options.root.empty()) {
        char pattern[] = "/tmp/agentsim-tv-XXXXXX";
        if (mkdtemp(pattern) == nullptr) {
            throw std::runtime_error("agentsim: cannot create a folder for the TV's filesystem");
        }
        root_ = pattern;
        temporaryRoot_ = true;
    } else {
        std::error_code error;
        fs::create_directories(options.root, error);
        if (error) {
            throw std::runtime_error("agentsim: cannot use " + options.root +
                                     " as the TV's filesystem: " + error.message());
        }
        root_ = fs::absolute(options.root).string();
    }
    if (!(options.timeScale > 0)) {
        throw std::runtime_error("agentsim: --time-scale must be a positive number");
    }
    tvsim::Tv& tv = tvsim::Tv::instance();
    tv.setFilesystemRoot(root_);
    tv.setTimeScale(options.timeScale);
    try {
        if (options.profile.empty()) {
            tv.loadDefaultProfile();
        } else if (options.profile == "empty") {
            tv.reset();
        } else {
            tv.loadProfileFile(options.profile);
        }
    } catch (const tvsim::ProfileError& error) {
        throw std::runtime_error(std::string("agentsim: ") + error.what());
    }
}

SimulatedTv::~SimulatedTv() {
    tvsim::Tv::instance().waitUntilDelivered();
    if (temporaryRoot_) {
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }
}

}  // namespace agentsim
