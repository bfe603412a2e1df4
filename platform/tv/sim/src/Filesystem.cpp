#include "Filesystem.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>

#include "EmbeddedText.h"
#include "tvsim/TvSim.h"

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

// Characters that a shell takes literally in a word, beyond letters, digits and bytes of
// non-ASCII characters.
constexpr char kPlainPunctuation[] = "/._-+,:@%=";

bool plainInShell(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) != 0 || std::strchr(kPlainPunctuation, c) != nullptr;
}

enum class Climbing { StaysAtTheTop, Refused };

// The TV path without "." and ".." parts, relative to the TV's "/". A ".." at the top either
// stays there, as the TV's own kernel has it, or makes the result nothing.
std::optional<fs::path> withinTheTv(const std::string& tvPath, Climbing climbing) {
    fs::path inside;
    int depth = 0;
    for (const fs::path& part : fs::path(tvPath).relative_path()) {
        if (part == "..") {
            if (depth == 0) {
                if (climbing == Climbing::Refused) {
                    return std::nullopt;
                }
                continue;
            }
            inside = inside.parent_path();
            --depth;
        } else if (!part.empty() && part != ".") {
            inside /= part;
            ++depth;
        }
    }
    return inside;
}

bool isWithin(const fs::path& path, const fs::path& folder) {
    const auto [end, unused] =
        std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return end == folder.end();
}

}  // namespace

bool Filesystem::usableAsRoot(const std::string& folder) {
    return std::all_of(folder.begin(), folder.end(), plainInShell);
}

void Filesystem::requireUsableRoot(const std::string& folder) {
    if (!usableAsRoot(folder)) {
        throw std::invalid_argument(
            "\"" + folder +
            "\" cannot hold the TV's filesystem: the TV's shell tools take the folder's name as it "
            "stands, so it may hold only letters, digits and / . _ - + , : @ % =");
    }
}

void Filesystem::setRoot(const std::string& folder) {
    requireUsableRoot(folder);
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
    // A ".." cannot climb above the TV's "/", just as on the TV.
    if (tvPath.find("..") != std::string::npos) {
        return (fs::path(root_) / *withinTheTv(tvPath, Climbing::StaysAtTheTop)).string();
    }
    // The middleware's own processes run in "/", so a relative path starts there too.
    return tvPath.empty() || tvPath.front() != '/' ? root_ + "/" + tvPath : root_ + tvPath;
}

std::string Filesystem::resolveInside(const std::string& tvPath) const {
    const std::string root = [this] {
        std::lock_guard<std::mutex> lock(mutex_);
        return root_;
    }();
    if (root.empty()) {
        return tvPath;
    }
    const std::optional<fs::path> inside = withinTheTv(tvPath, Climbing::Refused);
    if (!inside) {
        throw PathError("\"" + tvPath + "\" leaves the TV's filesystem through \"..\"");
    }
    const fs::path path = fs::path(root) / *inside;
    // Links are followed as the host follows them; where they lead must still be the TV's.
    std::error_code error;
    const fs::path realRoot = fs::weakly_canonical(root, error);
    const fs::path realPath = error ? fs::path() : fs::weakly_canonical(path, error);
    if (error) {
        throw PathError("\"" + tvPath +
                        "\" cannot be followed in the TV's filesystem: " + error.message());
    }
    if (!isWithin(realPath, realRoot)) {
        throw PathError("\"" + tvPath + "\" leaves the TV's filesystem through a symbolic link");
    }
    return path.string();
}

bool Filesystem::writeFile(const std::string& tvPath, const void* data, size_t size,
                           std::string& problem) const {
    fs::path path;
    try {
        path = resolveInside(tvPath);
    } catch (const PathError& error) {
        problem = error.what();
        return false;
    }
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
