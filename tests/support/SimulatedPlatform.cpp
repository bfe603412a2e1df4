#include "support/SimulatedPlatform.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace testing_support {

namespace fs = std::filesystem;

SimulatedPlatform::SimulatedPlatform(double timeScale) {
    char pattern[] = "/tmp/norvane-tv-XXXXXX";
    if (mkdtemp(pattern) == nullptr) {
        throw std::runtime_error("cannot create the TV root");
    }
    root_ = pattern;
    tv().reset();
    tv().setFilesystemRoot(root_);
    tv().setTimeScale(timeScale);
    zelsim::reset();
}

SimulatedPlatform::~SimulatedPlatform() {
    tv().waitUntilDelivered();
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

std::vector<std::string> SimulatedPlatform::takeHostLogTexts() {
    std::vector<std::string> texts;
    for (const zelsim::LogLine& line : zelsim::takeLogLines()) {
        texts.push_back(line.text);
    }
    return texts;
}

void writeTvFile(const std::string& tvPath, const std::string& text) {
    const fs::path path = tvsim::Tv::instance().resolvePath(tvPath);
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string readTvFile(const std::string& tvPath) {
    std::ifstream file(tvsim::Tv::instance().resolvePath(tvPath), std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace testing_support
