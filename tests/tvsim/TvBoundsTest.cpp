// The simulated TV's bounds: paths named from outside stay below its root, the root is one the
// shell tools can take, the time scale has its range, and the journal keeps its newest entries.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "TvTestSupport.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using TvBounds = tvtest::TvTest;

// A folder beside the TV's root, reached from inside it through the link "/away"; removed with
// the object, also when a test ends early.
class FolderOutsideTheRoot {
public:
    explicit FolderOutsideTheRoot(const std::string& root)
        : path_(fs::path(root).parent_path() / (fs::path(root).filename().string() + "-out")) {
        fs::create_directories(path_);
        fs::create_directory_symlink(path_, fs::path(root) / "away");
    }
    ~FolderOutsideTheRoot() { fs::remove_all(path_); }
    FolderOutsideTheRoot(const FolderOutsideTheRoot&) = delete;
    FolderOutsideTheRoot& operator=(const FolderOutsideTheRoot&) = delete;

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

TEST_F(TvBounds, PathsFromOutsideResolveInsideTheRootOrAreRefused) {
    EXPECT_EQ(tv().resolvePathInside("/OAD/../tmp/./x"), root() + "/tmp/x");
    EXPECT_THROW(tv().resolvePathInside("/../x"), tvsim::PathError);
    EXPECT_THROW(tv().resolvePathInside("/OAD/../../x"), tvsim::PathError);

    const FolderOutsideTheRoot outside(root());
    fs::create_directory_symlink("OAD", fs::path(root()) / "storage");
    EXPECT_EQ(tv().resolvePathInside("/storage/f"), root() + "/storage/f") << "a link inside";
    try {
        tv().resolvePathInside("/away/f");
        ADD_FAILURE() << "a link out of the root was followed";
    } catch (const tvsim::PathError& error) {
        EXPECT_STREQ(error.what(),
                     "\"/away/f\" leaves the TV's filesystem through a symbolic link");
    }
}

TEST_F(TvBounds, ThePlugInsOwnPathsClimbNoHigherThanTheTvsTop) {
    EXPECT_EQ(tv().resolvePath("/../../etc/passwd"), root() + "/etc/passwd");
    EXPECT_EQ(tv().resolvePath("/OAD/zellogaa"), root() + "/OAD/zellogaa");
}

TEST_F(TvBounds, ProfileFilesAreNotWrittenThroughALinkOutOfTheRoot) {
    const FolderOutsideTheRoot outside(root());
    try {
        tv().loadProfileText("{\"files\": {\"/away/planted\": \"x\"}}", "p.json");
        ADD_FAILURE() << "the file was written";
    } catch (const tvsim::ProfileError& error) {
        EXPECT_THAT(error.what(), HasSubstr("p.json: files.\"/away/planted\": cannot write it"));
    }
    EXPECT_TRUE(fs::is_empty(outside.path()));
}

TEST_F(TvBounds, ARootTheShellCannotTakeAsItStandsIsRefused) {
    for (const char* folder : {"/tmp/a b", "/tmp/a'b", "/tmp/a\"b", "/tmp/a;b", "/tmp/a$b",
                               "/tmp/a`b", "/tmp/a\\b", "/tmp/a\nb", "/tmp/a*b"}) {
        EXPECT_FALSE(tvsim::Tv::usableAsRoot(folder)) << folder;
        EXPECT_THROW(tv().setFilesystemRoot(folder), std::invalid_argument) << folder;
        EXPECT_EQ(tv().filesystemRoot(), root()) << "unchanged";
    }
    EXPECT_TRUE(tvsim::Tv::usableAsRoot("/tmp/tv-1.0_a+b,c:d@e%f=g/\xc3\xa9t\xc3\xa9"));
}

TEST_F(TvBounds, TheTimeScaleHasItsRange) {
    for (double scale : {0.0, -1.0, 0.0099, 10000.5, 1e300}) {
        EXPECT_THROW(tv().setTimeScale(scale), std::invalid_argument) << scale;
    }
    for (double scale : {0.01, 10000.0}) {
        tv().setTimeScale(scale);
        EXPECT_EQ(tv().timeScale(), scale);
    }
}

TEST_F(TvBounds, TheJournalKeepsItsNewestEntriesAndCountsTheRest) {
    marlo::lm::interfaces::tvapi::ValueHandle* handle =
        tvtest::connect("marlo.sl2.i32.sound.main.volume");
    ASSERT_NE(handle, nullptr);
    for (int32_t value = 0; value < static_cast<int32_t>(tvsim::kJournalCapacity) + 5; ++value) {
        handle->setInt32(value);
    }
    uint64_t dropped = 0;
    const std::vector<tvsim::JournalEntry> journal = tv().takeJournal(&dropped);
    ASSERT_EQ(journal.size(), tvsim::kJournalCapacity);
    EXPECT_EQ(dropped, 5u);
    EXPECT_EQ(std::get<int32_t>(journal.front().value), 5);
    EXPECT_EQ(std::get<int32_t>(journal.back().value),
              static_cast<int32_t>(tvsim::kJournalCapacity) + 4);
    tv().takeJournal(&dropped);
    EXPECT_EQ(dropped, 0u) << "counted from the previous take";
}

}  // namespace
