// Log and channel-list files for download: collected or packed into the TV's working folder
// "/OAD/", named to the caller by type and index, and removed once sent. File types: "Log0" and
// "Log1" (the same log collection, read as numbered chunks) and "Channel List" (the channel
// database in a password-protected zip archive).
#pragma once

#include <cstdint>
#include <string>

namespace norvane {

// "Log0"/"Log1": runs the platform's log collection and returns the raw status of system() for
// it. Any other type packs the channel list: 1 when the archive is ready, else 0.
int32_t BizBackupReadFile(const std::string& fileType);

// The TV path of the index-th log chunk ("/OAD/zellogaa" for 0, "/OAD/zellogba" for 26), or of the
// channel-list archive for any other type. The path is not resolved through platformPath().
std::string BizGetReadFilePath(const std::string& fileType, int32_t index);

// Removes the files of a type: 0, or -1 for a type other than "Log0", "Log1", "Channel List".
int32_t BizRemoveReadFile(const std::string& fileType);

// Removal without a type: every log chunk, or the channel-list archive and its copied database.
int32_t BizRemoveLogFiles();
int32_t BizRemoveChannelListFiles();

}  // namespace norvane
