#include "platform/linux/files/file_system_linux.h"

#include "tests/linux/support/scoped_environment.h"
#include "tests/linux/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace trovel {
namespace {

namespace fs = std::filesystem;
using testing::Optional;
using testing::UnorderedElementsAre;

class FileSystemLinuxTest : public testing::Test {
protected:
    [[nodiscard]] std::string at(std::string const& place) const {
        return (folder_.path() / place).string();
    }
    [[nodiscard]] bool write(std::string const& place, std::string const& text) {
        return files_.writeFile(at(place), std::vector<std::uint8_t>(text.begin(), text.end()));
    }
    [[nodiscard]] std::string contents(std::string const& place) const {
        std::ifstream file(at(place));
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] mode_t mode(std::string const& place) const {
        struct stat status{};
        EXPECT_EQ(stat(at(place).c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    TemporaryFolder folder_;
    FileSystemLinux files_;
};

/// The process's file creation mask, until the end of the scope.
class ScopedMask {
public:
    explicit ScopedMask(mode_t mask) : former_(umask(mask)) {}
    ~ScopedMask() { umask(former_); }
    ScopedMask(ScopedMask const&) = delete;
    ScopedMask& operator=(ScopedMask const&) = delete;

private:
    mode_t former_;
};

TEST_F(FileSystemLinuxTest, TheHomeFolderIsTheEnvironmentsWithoutASlashAtTheEnd) {
    for (auto const& [variable, home] :
         {std::pair("/home/ann", "/home/ann"), std::pair("/home/a 'n\"n//", "/home/a 'n\"n"),
          std::pair("/", "/")}) {
        ScopedEnvironment const environment("HOME", variable);
        EXPECT_EQ(files_.homeDirectory(), home);
    }
    ScopedEnvironment const environment("HOME", nullptr);
    EXPECT_TRUE(files_.homeDirectory().starts_with('/'));
}

TEST_F(FileSystemLinuxTest, FoldersAndFilesAreForTheirOwnerAloneWhateverTheMask) {
    for (mode_t const mask : {0U, 022U, 0777U}) {
        ScopedMask const scoped(mask);
        auto const name = std::to_string(mask);
        ASSERT_TRUE(files_.createDirectory(at(name + "/.trovel/captures")));
        ASSERT_TRUE(write(name + "/.trovel/captures/a.png", "x"));
        EXPECT_EQ(mode(name + "/.trovel"), 0700U);
        EXPECT_EQ(mode(name + "/.trovel/captures"), 0700U);
        EXPECT_EQ(mode(name + "/.trovel/captures/a.png"), 0600U);
    }
}

TEST_F(FileSystemLinuxTest, AFolderThatIsThereStaysAsItIs) {
    ASSERT_EQ(mkdir(at("open").c_str(), 0755), 0);
    fs::permissions(at("open"), fs::perms(0755));
    EXPECT_TRUE(files_.createDirectory(at("open")));
    EXPECT_EQ(mode("open"), 0755U);
    fs::create_directory_symlink(at("open"), at("link"));
    EXPECT_TRUE(files_.createDirectory(at("link")));
}

TEST_F(FileSystemLinuxTest, AFileWhereAFolderShouldBeIsAFailure) {
    ASSERT_TRUE(write(".trovel", "x"));
    EXPECT_FALSE(files_.createDirectory(at(".trovel")));
    EXPECT_FALSE(files_.createDirectory(at(".trovel/captures")));
    EXPECT_FALSE(write(".trovel/captures/a.png", "x"));
    EXPECT_EQ(contents(".trovel"), "x");
}

TEST_F(FileSystemLinuxTest, WritingAgainReplacesInPlaceAndKeepsTheMode) {
    ASSERT_TRUE(write("a.png", "a longer text"));
    fs::permissions(at("a.png"), fs::perms(0644));
    ASSERT_TRUE(write("a.png", "short"));
    EXPECT_EQ(contents("a.png"), "short");
    EXPECT_EQ(mode("a.png"), 0644U);
    ASSERT_TRUE(write("empty.png", ""));
    EXPECT_TRUE(files_.fileExists(at("empty.png")));
}

TEST_F(FileSystemLinuxTest, AFullDiskIsAFailure) {
    std::vector<std::uint8_t> const bytes(4096, 1);
    EXPECT_FALSE(files_.writeFile("/dev/full", bytes));
}

TEST_F(FileSystemLinuxTest, AReaderThatNeverCameHoldsNothingUp) {
    ASSERT_EQ(mkfifo(at("pipe.png").c_str(), 0600), 0);
    EXPECT_FALSE(write("pipe.png", "x"));
}

TEST_F(FileSystemLinuxTest, ListingLeavesOutHiddenEntries) {
    for (auto const* name : {"a.png", ".hidden.png", "B.PNG", "c d'\".png"}) {
        ASSERT_TRUE(write(name, "x"));
    }
    ASSERT_TRUE(files_.createDirectory(at("folder")));
    EXPECT_THAT(
        files_.contentsOfDirectory(folder_.path().string()),
        Optional(UnorderedElementsAre(at("a.png"), at("B.PNG"), at("c d'\".png"), at("folder"))));
    EXPECT_EQ(files_.contentsOfDirectory(at("missing")), std::nullopt);
    EXPECT_EQ(files_.contentsOfDirectory(at("a.png")), std::nullopt);
}

TEST_F(FileSystemLinuxTest, TheCreationDateIsNotThatOfTheLastChange) {
    auto const before = std::chrono::system_clock::now() - std::chrono::seconds(2);
    ASSERT_TRUE(write("a.png", "x"));
    auto const date = files_.creationDate(at("a.png"));
    ASSERT_TRUE(date);
    EXPECT_GT(*date, before);
    EXPECT_EQ(files_.creationDate(at("missing")), std::nullopt);
    struct statx status{};
    ASSERT_EQ(statx(AT_FDCWD, at("a.png").c_str(), 0, STATX_BTIME, &status), 0);
    if ((status.stx_mask & STATX_BTIME) == 0) GTEST_SKIP() << "no birth times here";
    fs::last_write_time(at("a.png"), fs::file_time_type::clock::now() - std::chrono::hours(24));
    EXPECT_EQ(files_.creationDate(at("a.png")), date);
}

TEST_F(FileSystemLinuxTest, OnlyFilesAreRemoved) {
    ASSERT_TRUE(write("a.png", "x"));
    EXPECT_TRUE(files_.removeItem(at("a.png")));
    EXPECT_FALSE(files_.removeItem(at("a.png")));
    ASSERT_TRUE(files_.createDirectory(at("folder.png")));
    EXPECT_FALSE(files_.removeItem(at("folder.png")));
    EXPECT_TRUE(files_.fileExists(at("folder.png")));
}

} // namespace
} // namespace trovel
