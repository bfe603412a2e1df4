// The TV's filesystem: a folder that stands for its "/".
#pragma once

#include <cstddef>
#include <mutex>
#include <string>

namespace tvsim {

class Filesystem {
public:
    // Installs the TV's own tools below the new root. An empty folder means the real "/"
    // (paths resolve unchanged and nothing is installed). Throws std::invalid_argument for a
    // folder whose name the shell does not take as it stands (nothing changes then), and
    // std::runtime_error when the tools cannot be installed.
    void setRoot(const std::string& folder);
    static bool usableAsRoot(const std::string& folder);
    // Throws std::invalid_argument, naming the folder and what it may hold, unless usableAsRoot.
    static void requireUsableRoot(const std::string& folder);
    // Set while the TV is being set up, so no lock guards the reference.
    const std::string& root() const { return root_; }
    std::string resolve(const std::string& tvPath) const;
    // As resolve, for a path from outside the TV; throws PathError when it would leave the root.
    std::string resolveInside(const std::string& tvPath) const;
    // Writes the bytes to a TV path inside the root, creating missing folders; on failure
    // returns false with the reason in `problem`.
    bool writeFile(const std::string& tvPath, const void* data, size_t size,
                   std::string& problem) const;

private:
    void installTools() const;

    mutable std::mutex mutex_;
    std::string root_;
};

}  // namespace tvsim
