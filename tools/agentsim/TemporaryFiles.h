// The temporary files and folders agentsim makes, removed however it ends: when main returns,
// when something calls exit(), and on SIGINT, SIGTERM, SIGHUP and SIGPIPE, after which agentsim
// exits with 128 + the signal's number.
#pragma once

#include <string>

namespace agentsim {

// Installs the signal handling; main calls it first. Until then only exits clean up.
void removeTemporariesOnSignals();

// The folder for temporary files: $TMPDIR when it names a folder by its absolute path, else /tmp.
std::string temporaryFolder();

// A fresh folder "<prefix>XXXXXX", removed at exit unless released first. Made and registered
// at once, so that no signal can come in between. Throws std::runtime_error.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::string& prefix);
    // Removes the folder and all it holds.
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

// An open file with no name: made as "<prefix>XXXXXX" and unlinked at once, with no signal in
// between. Throws std::runtime_error.
int openNamelessFile(const std::string& prefix);

}  // namespace agentsim
