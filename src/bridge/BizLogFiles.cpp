#include "bridge/BizLogFiles.h"

#include <unistd.h>

#include <cstdio>
#include <optional>

#include "common/ConsoleLog.h"
#include "common/Seams.h"
#include "common/ShellCommand.h"

namespace norvane {
namespace {

constexpr const char* kWorkFolder = "/OAD/";
constexpr const char* kLogPrefix = "zellog";
constexpr const char* kLogTool = "/usr/local/bin/ra_getlog";
constexpr const char* kLogChunkSize = "2560k";
constexpr const char* kChannelDatabase = "/var/tvservice/servicelist.db";
constexpr const char* kChannelListCopy = "/OAD/zel_channel_list.db";
constexpr const char* kChannelListArchive = "/OAD/zel_channel_list.zip";
constexpr const char* kChannelListType = "Channel List";
// Both log types name the same collection.
constexpr const char* kLogTypes[] = {"Log0", "Log1"};
constexpr int32_t kLettersPerPlace = 26;
constexpr unsigned int kMostWaitSeconds = 10;

bool isLogType(const std::string& fileType) {
    return fileType == kLogTypes[0] || fileType == kLogTypes[1];
}

// The name split gives the index-th piece: two letters counting from "aa".
std::string logChunkPath(int32_t index) {
    char path[64] = {};
    std::snprintf(path, sizeof path, "%s%s%c%c", kWorkFolder, kLogPrefix,
                  'a' + index / kLettersPerPlace, 'a' + index % kLettersPerPlace);
    return path;
}

bool tvFileExists(const std::string& tvPath) {
    return access(platformPath(tvPath).c_str(), F_OK) == 0;
}

// Tests for the file, and again after each of at most kMostWaitSeconds one-second waits (each
// announced with `waitMessage`). Returns how many waits it took, or nothing if it never came.
std::optional<unsigned int> waitForFile(const std::string& tvPath, const char* waitMessage) {
    for (unsigned int waits = 0;; ++waits) {
        if (tvFileExists(tvPath)) {
            return waits;
        }
        if (waits == kMostWaitSeconds) {
            return std::nullopt;
        }
        consoleLog(kLogError, "%s", waitMessage);
        clock::sleepSeconds(1);
    }
}

// The tool's status is what the caller counts files by, whatever it means.
int32_t collectLogs() {
    const int status =
        runShellCommand("%s %s %s", platformPath(kLogTool).c_str(), kLogChunkSize, kLogPrefix);
    waitForFile(logChunkPath(0), "Getting log files, please wait.\n");
    return status;
}

// 1 when the archive is there within the wait; one that first shows after the last wait
// counts as missing.
int32_t packChannelList() {
    const std::string copy = platformPath(kChannelListCopy);
    runShellCommand("cp %s %s -rf", platformPath(kChannelDatabase).c_str(), copy.c_str());
    runShellCommand("zip -P 4862 %s %s", platformPath(kChannelListArchive).c_str(), copy.c_str());
    const std::optional<unsigned int> waits =
        waitForFile(kChannelListArchive, "Getting channel list file, please wait.\n");
    return waits && *waits < kMostWaitSeconds ? 1 : 0;
}

}  // namespace

int32_t BizBackupReadFile(const std::string& fileType) {
    const int32_t totalNum = isLogType(fileType) ? collectLogs() : packChannelList();
    consoleLog(kLogInfo, "BizBackupReadFile: FileType:%s, totalNum:%d\n", fileType.c_str(),
               totalNum);
    return totalNum;
}

std::string BizGetReadFilePath(const std::string& fileType, int32_t index) {
    const std::string path = isLogType(fileType) ? logChunkPath(index) : kChannelListArchive;
    consoleLog(kLogInfo, "BizGetReadFilePath: FileType= %s, index=%d, FilePath=%s.\n",
               fileType.c_str(), index, path.c_str());
    return path;
}

int32_t BizRemoveReadFile(const std::string& fileType) {
    consoleLog(kLogInfo, "BizRemoveReadFile: strFileType:%s\n", fileType.c_str());
    if (isLogType(fileType)) {
        return BizRemoveLogFiles();
    }
    if (fileType == kChannelListType) {
        return BizRemoveChannelListFiles();
    }
    return -1;
}

int32_t BizRemoveLogFiles() {
    runShellCommand("rm %s%s* -rf", platformPath(kWorkFolder).c_str(), kLogPrefix);
    clock::sleepSeconds(1);
    return 0;
}

int32_t BizRemoveChannelListFiles() {
    runShellCommand("rm %s %s -rf", platformPath(kChannelListArchive).c_str(),
                    platformPath(kChannelListCopy).c_str());
    clock::sleepSeconds(1);
    return 0;
}

}  // namespace norvane
