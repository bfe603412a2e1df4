#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "common/ConsoleLog.h"
#include "common/WholeFile.h"
#include "support/StdoutCapture.h"

namespace norvane {
namespace {

using testing_support::StdoutCapture;

// A format that comes out empty gives an empty text whether or not the formatter takes the
// zero length apart: that edge cannot be seen.
TEST(ConsoleLog, FramesInformationAndErrorsAndFormatsArguments) {
    StdoutCapture console;
    EXPECT_EQ(consoleLog(kLogInfo, "value = %d, key = %s.\n", 42, "k"), 0);
    EXPECT_EQ(console.take(), "\t<-- value = 42, key = k.\n -->\n");
    EXPECT_EQ(consoleLog(kLogError, "failed"), 0);
    EXPECT_EQ(console.take(), "\t<** failed **>\n");
    EXPECT_EQ(consoleLog(7, "%s", "other level"), 0);
    EXPECT_EQ(console.take(), "\t<** other level **>\n");
}

class WholeFileTest : public testing::Test {
protected:
    // Tests run side by side, so each one gets a file of its own.
    std::string path = testing::TempDir() + "whole-file-" +
                       testing::UnitTest::GetInstance()->current_test_info()->name() + ".bin";
    void TearDown() override { std::remove(path.c_str()); }
};

TEST_F(WholeFileTest, ReadsEveryByteAndTerminates) {
    const std::string bytes("ab\0c\xff\n", 6);
    std::ofstream(path, std::ios::binary) << bytes;
    char* text = readWholeFile(path.c_str());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::memcmp(text, bytes.data(), bytes.size()), 0);
    EXPECT_EQ(text[bytes.size()], '\0');
    std::free(text);
}

TEST_F(WholeFileTest, EmptyFileGivesAnEmptyText) {
    std::ofstream(path, std::ios::binary).close();
    char* text = readWholeFile(path.c_str());
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text, "");
    std::free(text);
}

TEST_F(WholeFileTest, MissingFileIsLoggedAndGivesNull) {
    StdoutCapture console;
    EXPECT_EQ(readWholeFile("/nonexistent/folder/file"), nullptr);
    EXPECT_EQ(console.take(), "\t<** Problem reading file /nonexistent/folder/file **>\n");
}

}  // namespace
}  // namespace norvane
