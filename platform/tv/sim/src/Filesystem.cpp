#include "Filesystem.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "EmbeddedText.h"

namespace tvsim {
namespace {

namespace fs = std::filesystem;

constexpr char kLogToolPath[] = "/usr/local/bin/ra_getlog";
// Folders every set has: temporary files, and the writable storage for downloads and updates.
constexpr const char* kStandardFolders[] = {"/tmp", "/OAD"};

bool writeWhole(const std::string& path, const void* data, size_t size, std::string& problem) {
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "wb"), &std::fclose);
    if (!file) {
        problem = std::strerror(errno);
        return false;
    }
    if (size > 0 && std::fwrite(data, 1, size, file.get()) != size) {
        problem = std::strerror(errno);
        return false;
    }
    if (std::fclose(file.release()) != 0) {
        problem = std::strerror(errno);
        return false;
    }
    return true;
}

}  // namespace

void Filesystem::setRoot(const std::string& folder) {
    std::string root = folder;
    while (!root.empty() && root.back() == '/') {
        root.pop_back();
    }
    {
        std::lock_guard<std::mutex> lock(mutex_);
        root_ = root;
    }
    if (!root.empty()) {
        installTools();
    }
}

std::string Filesystem::resolve(const std::string& tvPath) const {
    std::lock_guard<std::mutex> lock(mutex_);
    if (root_.empty()) {
        return tvPath;
    }
    // The middleware's own processes run in "/", so a relative path starts there too.
    return tvPath.empty() || tvPath.front() != '/' ? root_ + "/" + tvPath : root_ + tvPath;
}

bool Filesystem::writeFile(const std::string& tvPath, const void* data, size_t size,
                           std::string& problem) const {
    const fs::path path = resolve(tvPath);
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error) {
        problem = error.message();
        return false;
    }
    return writeWhole(path, data, size, problem);
}

void Filesystem::installTools() const {
    const std::string script = embedded::logTool();
    std::string problem;
    if (!writeFile(kLogToolPath, script.data(), script.size(), problem)) {
        throw std::runtime_error("cannot install " + resolve(kLogToolPath) + ": " + problem);
    }
    std::error_code error;
    fs::permissions(resolve(kLogToolPath),
                    fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                        fs::perms::others_read | fs::perms::others_exec,
                    error);
    if (error) {
        throw std::runtime_error("cannot make " + resolve(kLogToolPath) +
                                 " executable: " + error.message());
    }
    for (const char* folder : kStandardFolders) {
        fs::create_directories(resolve(folder), error);
        if (error) {
            throw std::runtime_error("cannot create " + resolve(folder) + ": " + error.message());
        }
    }
}

}  // namespace tvsim
