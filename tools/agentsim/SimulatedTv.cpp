#include "SimulatedTv.h"

#include <filesystem>
#include <stdexcept>
#include <variant>

#include "tvsim/TvSim.h"

namespace agentsim {

namespace fs = std::filesystem;

namespace {

// Checked before anything is made in the folder: `what` names where it came from.
void requireUsableRoot(const std::string& folder, const std::string& what) {
    try {
        tvsim::Tv::requireUsableRoot(folder);
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument("agentsim: " + what + " " + error.what());
    }
}

// The folder the user named, made if missing.
std::string userRoot(const std::string& folder) {
    const std::string root = fs::absolute(folder).lexically_normal().string();
    requireUsableRoot(root, "--root");
    std::error_code error;
    fs::create_directories(root, error);
    if (error) {
        throw std::runtime_error("agentsim: cannot use " + root +
                                 " as the TV's filesystem: " + error.message());
    }
    return root;
}

void loadProfile(tvsim::Tv& tv, const std::string& profile) {
    try {
        if (profile.empty()) {
            tv.loadDefaultProfile();
        } else if (profile == "empty") {
            tv.reset();
        } else {
            tv.loadProfileFile(profile);
        }
    } catch (const tvsim::ProfileError& error) {
        throw std::invalid_argument(std::string("agentsim: ") + error.what());
    }
}

}  // namespace

std::string tvText(const char* key) {
    const tvsim::Value value = tvsim::Tv::instance().get(key);
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::string();
}

int32_t tvNumber(const char* key) {
    const tvsim::Value value = tvsim::Tv::instance().get(key);
    const auto* number = std::get_if<int32_t>(&value);
    return number != nullptr ? *number : 0;
}

SimulatedTv::SimulatedTv(const TvOptions& options) {
    if (options.root.empty()) {
        const std::string temporary = temporaryFolder();
        requireUsableRoot(temporary, "the temporary folder (TMPDIR)");
        temporaryRoot_ = std::make_unique<TemporaryFolder>(temporary + "/agentsim-tv-");
        root_ = temporaryRoot_->path();
    } else {
        root_ = userRoot(options.root);
    }
    tvsim::Tv& tv = tvsim::Tv::instance();
    try {
        tv.setTimeScale(options.timeScale);
        tv.setFilesystemRoot(root_);
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument(std::string("agentsim: ") + error.what());
    } catch (const std::exception& error) {
        throw std::runtime_error(std::string("agentsim: ") + error.what());
    }
    loadProfile(tv, options.profile);
}

SimulatedTv::~SimulatedTv() {
    tvsim::Tv::instance().waitUntilDelivered();
}

}  // namespace agentsim
