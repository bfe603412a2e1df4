#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvGetDeviceConfig"

#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceConfig.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"
#include "common/Seams.h"
#include "zel/core/Base64Util.h"

namespace norvane {
namespace Sv {

namespace {

constexpr const char* kFileTypeInput = "DOWNLOAD_FILE_TYPE";
constexpr const char* kFirstLogChunk = "Log0";
constexpr const char* kSecondLogChunk = "Log1";
constexpr const char* kChannelList = "Channel List";

struct Download {
    int32_t result;
    std::string content;
};

// The TV path of the file to send, once prepared; nothing for an unknown type. "Log0" makes a
// new log collection and "Channel List" a new archive; "Log1" makes nothing of its own: it is
// the second chunk of the collection the last "Log0" made.
std::optional<std::string> preparedFile(const std::string& fileType) {
    if (fileType == kFirstLogChunk || fileType == kChannelList) {
        NvBackupReadFile(fileType);
        return NvGetReadFilePath(fileType, 0);
    }
    if (fileType == kSecondLogChunk) {
        return NvGetReadFilePath(fileType, 1);
    }
    return std::nullopt;
}

// An empty path names no file (resolved, it would name the TV's root folder).
bool fileExists(const std::string& tvPath) {
    return !tvPath.empty() && access(platformPath(tvPath).c_str(), F_OK) == 0;
}

Download readWhole(const std::string& tvPath) {
    std::ifstream file(platformPath(tvPath), std::ios::binary);
    if (!file.is_open()) {
        return {kResultOpenFailed, "File type error or open file error."};
    }
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (!file || size <= 0) {
        return {kResultReadFailed, ""};
    }
    std::string content(static_cast<size_t>(size), '\0');
    file.seekg(0, std::ios::beg);
    file.read(&content[0], size);
    if (file.gcount() == 0 || file.bad()) {
        return {kResultReadFailed, ""};
    }
    // A file that shrank since its size was taken is sent as far as it still goes.
    content.resize(static_cast<size_t>(file.gcount()));
    return {kResultDone, content};
}

std::string base64(const std::string& content) {
    const std::unique_ptr<char, decltype(&std::free)> encoded(
        Zel::Core::Base64Util::Encode(content), &std::free);
    if (!encoded) {
        throw std::bad_alloc();
    }
    return encoded.get();
}

}  // namespace

Zel::Sv::CommandHandler* GetDeviceConfig::create() {
    NV_TRACE(__func__);
    return new CommandGetDeviceConfig(*this);
}

// The agent shows this command by its description alone: no category, name or outputs.
int32_t CommandGetDeviceConfig::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    ZelJson::Value inputs = emptyArray();
    inputs.append(InputBuilder(kFileTypeInput, "File Type", "Seletc File Type.", 1, kInputList)
                      .defaultValue(kFirstLogChunk)
                      .values({kFirstLogChunk, kSecondLogChunk, kChannelList})
                      .shown(false)
                      .build());
    inputs.append(InputBuilder("LOG_SAVE_INTRODUCTION",
                               "If you want to save log files, please select Log0, then select "
                               "Log1.",
                               "Display the turn of saving log files.", -1, kInputText)
                      .defaultValue("")
                      .flags(false, true, true)
                      .build());
    description["DESCRIPTION"] = "Read Log and channellist.";
    description["ORDER"] = 6;
    description["INPUTS"] = inputs;
    return kResultDone;
}

int32_t CommandGetDeviceConfig::executeHandler(const ZelJson::Value& input,
                                               ZelJson::Value& output) {
    NV_TRACE(__func__);
    const std::string fileType = stringMember(input, kFileTypeInput).value_or("");
    const std::optional<std::string> prepared = preparedFile(fileType);
    if (!prepared) {
        NV_HOST_LOG(kSeverityError, "File Type error. strFileType=%s", fileType.c_str());
    }
    const std::string path = prepared.value_or("");
    NV_HOST_LOG(kSeverityError, "strFileType=%s, File Name = %s", fileType.c_str(), path.c_str());

    Download download{kResultDone, "The file is empty."};
    if (fileExists(path)) {
        download = readWhole(path);
    } else {
        NV_HOST_LOG(kSeverityError, "File Not Exist. strFileFullName=%s", path.c_str());
    }
    if (!path.empty()) {
        std::remove(platformPath(path).c_str());
    }
    output = base64(download.content);
    return download.result;
}

}  // namespace Sv
}  // namespace norvane
