// The device configuration download: log chunks and the channel-list archive, prepared by the
// simulated TV's own tools, sent base64-encoded and deleted.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "CommandTest.h"
#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceConfig.h"
#include "zel/core/Base64Util.h"

namespace norvane {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing_support::readTvFile;
using testing_support::writeTvFile;

constexpr const char* kFirstChunk = "/OAD/zellogaa";
constexpr const char* kSecondChunk = "/OAD/zellogab";
constexpr const char* kArchive = "/OAD/zel_channel_list.zip";

std::string decoded(const ZelJson::Value& output) {
    size_t length = 0;
    unsigned char* bytes = Zel::Core::Base64Util::Decode(output.asString(), length);
    const std::string text(reinterpret_cast<const char*>(bytes), length);
    std::free(bytes);
    return text;
}

ZelJson::Value request(const char* fileType) {
    ZelJson::Value input(ZelJson::objectValue);
    input["DOWNLOAD_FILE_TYPE"] = fileType;
    return input;
}

class DeviceConfig : public CommandTest {
protected:
    Sv::GetDeviceConfig command;

    bool tvFileExists(const std::string& tvPath) { return fs::exists(tv().resolvePath(tvPath)); }
};

TEST_F(DeviceConfig, Log0CollectsAndSendsTheFirstChunkThenLog1FindsNoSecond) {
    const Outcome log0 = execute(command, request("Log0"));
    EXPECT_EQ(log0.result, 0);
    ASSERT_TRUE(log0.document.isString());
    const std::string log = decoded(log0.document);
    EXPECT_GT(log.size(), 1000u) << "the default log fits one chunk";
    EXPECT_FALSE(tvFileExists(kFirstChunk)) << "sent files are deleted";
    EXPECT_THAT(takeLogTexts(), Contains("strFileType=Log0, File Name = /OAD/zellogaa"));

    const Outcome log1 = execute(command, request("Log1"));
    EXPECT_EQ(log1.result, 0);
    EXPECT_EQ(decoded(log1.document), "The file is empty.");
    EXPECT_THAT(takeLogTexts(), ElementsAre("strFileType=Log1, File Name = /OAD/zellogab",
                                            "File Not Exist. strFileFullName=/OAD/zellogab"));
}

TEST_F(DeviceConfig, Log1SendsTheSecondChunkOfTheLastCollectionOnce) {
    setenv("TVSIM_LOG_BYTES", "3000000", 1);
    execute(command, request("Log0"));
    unsetenv("TVSIM_LOG_BYTES");
    const std::string secondChunk = readTvFile(kSecondChunk);
    ASSERT_EQ(secondChunk.size(), 3000000u - 2560u * 1024u);

    const Outcome first = execute(command, request("Log1"));
    EXPECT_EQ(first.result, 0);
    EXPECT_EQ(decoded(first.document), secondChunk);
    EXPECT_EQ(decoded(execute(command, request("Log1")).document), "The file is empty.");
}

TEST_F(DeviceConfig, ChannelListSendsTheArchive) {
    const Outcome outcome = execute(command, request("Channel List"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(decoded(outcome.document).substr(0, 4), std::string("PK\x03\x04", 4));
    EXPECT_FALSE(tvFileExists(kArchive));
}

TEST_F(DeviceConfig, AnUnknownTypeIsLoggedAndSendsTheEmptyNotice) {
    writeTvFile(kFirstChunk, "left from before");
    const Outcome outcome = execute(command, request("log0"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(decoded(outcome.document), "The file is empty.");
    const std::vector<zelsim::LogLine> log = takeLogLines();
    ASSERT_EQ(log.size(), 3u);
    EXPECT_EQ(log[0].text, "File Type error. strFileType=log0");
    EXPECT_EQ(log[1].text, "strFileType=log0, File Name = ");
    EXPECT_EQ(log[2].text, "File Not Exist. strFileFullName=");
    for (const zelsim::LogLine& line : log) {
        EXPECT_EQ(line.severity, 2) << line.text;
    }
    EXPECT_TRUE(tvFileExists(kFirstChunk)) << "no collection, and nothing deleted";
}

// An empty file fails the size check, and would fail the read after it the same way (7): where
// the size check's edge lies cannot be seen from outside.
TEST_F(DeviceConfig, AnEmptyFileIsAReadFailureAndIsDeleted) {
    writeTvFile(kSecondChunk, "");
    const Outcome outcome = execute(command, request("Log1"));
    EXPECT_EQ(outcome.result, 7);
    EXPECT_EQ(outcome.document, ZelJson::Value(""));
    EXPECT_FALSE(tvFileExists(kSecondChunk));
}

TEST_F(DeviceConfig, AFileThatCannotBeOpenedIsAnOpenFailureAndIsDeleted) {
    // A socket exists but opens for nobody, not even for root.
    const std::string path = tv().resolvePath(kSecondChunk);
    const int endpoint = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(endpoint, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, path.c_str());
    ASSERT_EQ(bind(endpoint, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

    const Outcome outcome = execute(command, request("Log1"));
    close(endpoint);
    EXPECT_EQ(outcome.result, 6);
    EXPECT_EQ(decoded(outcome.document), "File type error or open file error.");
    EXPECT_FALSE(tvFileExists(kSecondChunk));
}

}  // namespace
}  // namespace norvane
