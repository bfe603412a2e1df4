#include <cstdlib>
#include <filesystem>

#include "FilesTest.h"
#include "bridge/BizLogFiles.h"
#include "common/ShellCommand.h"

namespace norvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing_support::readTvFile;
using testing_support::writeTvFile;

constexpr const char* kArchive = "/OAD/zel_channel_list.zip";

TEST(ShellCommand, RunsWhatFillsTheBufferAndRefusesOneByteMore) {
    testing_support::StdoutCapture console;
    const std::string touch = "touch " + testing::TempDir();
    const std::string fits(kShellCommandCapacity - 1 - touch.size(), 'f');
    const std::string tooLong = fits + "x";
    EXPECT_EQ(runShellCommand("%s%s", touch.c_str(), fits.c_str()), 0);
    EXPECT_EQ(runShellCommand("%s%s", touch.c_str(), tooLong.c_str()), -1);
    EXPECT_TRUE(fs::remove(testing::TempDir() + fits));
    EXPECT_FALSE(fs::exists(testing::TempDir() + tooLong));
    EXPECT_EQ(console.take(), "\t<** Shell command longer than 127 bytes, not run: " + touch +
                                  tooLong + "\n **>\n");
}

TEST(LogFilePaths, ChunksCountInTwoLettersAndOtherTypesNameTheArchive) {
    testing_support::StdoutCapture console;
    EXPECT_EQ(BizGetReadFilePath("Log0", 0), "/OAD/zellogaa");
    EXPECT_EQ(BizGetReadFilePath("Log1", 26), "/OAD/zellogba");
    EXPECT_EQ(BizGetReadFilePath("Log0", 675), "/OAD/zellogzz");
    EXPECT_EQ(BizGetReadFilePath("Foo", 3), kArchive);
    console.take();
    EXPECT_EQ(BizGetReadFilePath("Log1", 27), "/OAD/zellogbb");
    EXPECT_EQ(console.take(),
              "\t<-- BizGetReadFilePath: FileType= Log1, index=27, "
              "FilePath=/OAD/zellogbb.\n -->\n");
}

// The TV's working folder is part of its storage.
class LogFiles : public FilesTest {
protected:
    void SetUp() override {
        FilesTest::SetUp();
        fs::create_directories(hostPath("/OAD"));
    }
};

TEST_F(LogFiles, TheTvToolLeavesChunksThatRemovalDeletes) {
    setenv("TVSIM_LOG_BYTES", "3000000", 1);
    EXPECT_EQ(BizBackupReadFile("Log0"), 0);
    unsetenv("TVSIM_LOG_BYTES");
    EXPECT_EQ(console.take(), "\t<-- BizBackupReadFile: FileType:Log0, totalNum:0\n -->\n");
    EXPECT_EQ(fs::file_size(hostPath("/OAD/zellogaa")), 2560u * 1024u);
    EXPECT_EQ(fs::file_size(hostPath("/OAD/zellogab")), 3000000u - 2560u * 1024u);

    EXPECT_EQ(BizRemoveReadFile("Log1"), 0);
    EXPECT_TRUE(fs::is_empty(hostPath("/OAD")));
}

TEST_F(LogFiles, TheChannelListIsAnArchiveThatOpensWithThePassword) {
    writeTvFile("/var/tvservice/servicelist.db", "channel 1: NV One HD\n");
    EXPECT_EQ(BizBackupReadFile("Channel List"), 1);
    EXPECT_THAT(console.take(), HasSubstr("FileType:Channel List, totalNum:1\n"));
    const std::string unzip = "unzip -p -P 4862 " + hostPath(kArchive) + " > " + hostPath("/out");
    ASSERT_EQ(std::system(unzip.c_str()), 0);
    EXPECT_EQ(readTvFile("/out"), "channel 1: NV One HD\n");
}

TEST_F(LogFiles, AMissingChannelDatabaseGivesNoFileAfterTheFullWait) {
    const time_t before = tv().monotonicNow().tv_sec;
    EXPECT_EQ(BizBackupReadFile("Foo"), 0) << "an unknown type packs the channel list";
    EXPECT_GE(tv().monotonicNow().tv_sec - before, 10);
    const std::string output = console.take();
    EXPECT_EQ(occurrences(output, "\t<** Getting channel list file, please wait.\n **>\n"), 10u);
    EXPECT_THAT(output, HasSubstr("FileType:Foo, totalNum:0\n"));
}

TEST_F(LogFiles, RemovalRefusesUnknownTypesAndTakesOnlyItsOwnFiles) {
    const char* files[] = {"/OAD/zellogaa", "/OAD/zellogab", kArchive, "/OAD/zel_channel_list.db"};
    for (const char* file : files) {
        writeTvFile(file, "x");
    }
    const auto present = [&] {
        std::vector<bool> found;
        for (const char* file : files) {
            found.push_back(fs::exists(hostPath(file)));
        }
        return found;
    };
    EXPECT_EQ(BizRemoveReadFile("Foo"), -1);
    EXPECT_EQ(BizRemoveReadFile("channel list"), -1);
    EXPECT_THAT(present(), testing::ElementsAre(true, true, true, true));
    EXPECT_EQ(BizRemoveReadFile("Log0"), 0);
    EXPECT_THAT(present(), testing::ElementsAre(false, false, true, true));
    EXPECT_EQ(BizRemoveReadFile("Channel List"), 0);
    EXPECT_THAT(present(), testing::ElementsAre(false, false, false, false));
    EXPECT_THAT(console.take(), HasSubstr("\t<-- BizRemoveReadFile: strFileType:Foo\n -->\n"));
}

}  // namespace
}  // namespace norvane
