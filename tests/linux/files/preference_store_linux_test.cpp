#include "platform/linux/files/preference_store_linux.h"

#include "tests/linux/support/scoped_environment.h"

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace trovel {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

class PreferenceStoreLinuxTest : public testing::Test {
protected:
    PreferenceStoreLinuxTest() {
        std::string name = fs::temp_directory_path() / "trovel-preferences-XXXXXX";
        root_ = mkdtemp(name.data());
        path_ = root_ / "trovel" / "preferences.ini";
    }
    ~PreferenceStoreLinuxTest() override { fs::remove_all(root_); }

    void write(std::string const& content) {
        fs::create_directories(path_.parent_path());
        std::ofstream(path_, std::ios::binary) << content;
    }
    static std::string contentOf(fs::path const& path) {
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }
    [[nodiscard]] fs::path aside(std::string const& ending = "") const {
        return path_.string() + ".broken" + ending;
    }
    [[nodiscard]] std::ptrdiff_t fileCount() const {
        return std::distance(fs::directory_iterator(path_.parent_path()), fs::directory_iterator());
    }

    fs::path root_;
    fs::path path_;
};

TEST_F(PreferenceStoreLinuxTest, AFreshAccountHasNothing) {
    PreferenceStoreLinux const store(path_);
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    EXPECT_EQ(store.integerForKey("terminalModeTarget"), 0);
    EXPECT_EQ(store.stringForKey("preferredAIApp"), std::nullopt);
    EXPECT_FALSE(fs::exists(path_.parent_path())) << "reading makes nothing";
}

TEST_F(PreferenceStoreLinuxTest, AWriteIsSeenByTheNextReadAndTheNextProcess) {
    PreferenceStoreLinux store(path_);
    store.setBool("autoSendEnabled", true);
    store.setInteger("hotkeyKeyCode", 4294967295);
    store.setString("preferredAIApp", "Zoë \"x\"\n");
    EXPECT_TRUE(store.boolForKey("autoSendEnabled"));
    PreferenceStoreLinux const next(path_);
    EXPECT_TRUE(next.boolForKey("autoSendEnabled"));
    EXPECT_EQ(next.integerForKey("hotkeyKeyCode"), 4294967295);
    EXPECT_EQ(next.stringForKey("preferredAIApp"), "Zoë \"x\"\n");
}

TEST_F(PreferenceStoreLinuxTest, FileAndFolderAreThisUsersAlone) {
    auto const former = umask(0);
    PreferenceStoreLinux(path_).setBool("autoSendEnabled", true);
    umask(former);
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(path_.parent_path()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fileCount(), 1) << "no temporary file is left";
}

TEST_F(PreferenceStoreLinuxTest, WhatOthersWriteIsSeen) {
    PreferenceStoreLinux store(path_);
    store.setBool("autoSendEnabled", true);
    write("autoSendEnabled=false\nterminalModeTarget=7\n");
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    store.setBool("terminalModeEnabled", true);
    EXPECT_EQ(store.integerForKey("terminalModeTarget"), 7);
    fs::remove(path_);
    EXPECT_FALSE(store.boolForKey("terminalModeEnabled"));
}

TEST_F(PreferenceStoreLinuxTest, AValueOfAnotherTypeReadsAsAbsentAndStays) {
    write("autoSendEnabled=1\nterminalModeTarget=\"2\"\npreferredAIApp=true\ncustom=3.5\n");
    PreferenceStoreLinux store(path_);
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    EXPECT_EQ(store.integerForKey("terminalModeTarget"), 0);
    EXPECT_EQ(store.stringForKey("preferredAIApp"), std::nullopt);
    EXPECT_EQ(store.stringForKey("custom"), std::nullopt);
    store.setBool("hasCompletedOnboarding", true);
    EXPECT_EQ(contentOf(path_), "autoSendEnabled=1\nterminalModeTarget=\"2\"\npreferredAIApp=true\n"
                                "custom=3.5\nhasCompletedOnboarding=true\n");
    EXPECT_FALSE(fs::exists(aside()));
}

TEST_F(PreferenceStoreLinuxTest, ABrokenFileIsSetAsideOnceAndItsGoodLinesLiveOn) {
    std::string const broken = "hasCompletedOnboarding=true\n<xml/>\nhotkeyKeyCode=1";
    write(broken);
    PreferenceStoreLinux store(path_);
    EXPECT_EQ(store.integerForKey("hotkeyKeyCode"), 0);
    EXPECT_TRUE(store.boolForKey("hasCompletedOnboarding"));
    store.setBool("autoSendEnabled", true);
    EXPECT_EQ(contentOf(aside()), broken);
    EXPECT_EQ(contentOf(path_), "hasCompletedOnboarding=true\nautoSendEnabled=true\n");
    EXPECT_EQ(fileCount(), 2);
}

TEST_F(PreferenceStoreLinuxTest, AFileThatWasSetAsideIsNeverOverwritten) {
    write("first");
    PreferenceStoreLinux const store(path_);
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    write("second");
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    EXPECT_EQ(contentOf(aside()), "first");
    EXPECT_EQ(contentOf(aside(".2")), "second");
}

TEST_F(PreferenceStoreLinuxTest, AHugeFileIsSetAside) {
    write(std::string(3'000'000, '\n') + "autoSendEnabled=true\n");
    PreferenceStoreLinux const store(path_);
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    EXPECT_GT(fs::file_size(aside()), 3'000'000U);
}

TEST_F(PreferenceStoreLinuxTest, ADirectoryInItsPlaceIsLeftAlone) {
    fs::create_directories(path_ / "kept");
    PreferenceStoreLinux store(path_);
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    store.setBool("autoSendEnabled", true);
    EXPECT_TRUE(store.boolForKey("autoSendEnabled")) << "kept in memory";
    EXPECT_TRUE(fs::is_directory(path_ / "kept"));
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(PreferenceStoreLinuxTest, APipeInItsPlaceDoesNotHoldTheProgramUp) {
    fs::create_directories(path_.parent_path());
    ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
    PreferenceStoreLinux store(path_);
    store.setBool("autoSendEnabled", true);
    EXPECT_TRUE(store.boolForKey("autoSendEnabled"));
    EXPECT_TRUE(fs::is_fifo(path_));
}

TEST_F(PreferenceStoreLinuxTest, AFileInPlaceOfItsFolderIsLeftAlone) {
    std::ofstream(path_.parent_path()) << "kept";
    PreferenceStoreLinux store(path_);
    store.setInteger("terminalModeTarget", 3);
    EXPECT_EQ(store.integerForKey("terminalModeTarget"), 3);
    EXPECT_EQ(contentOf(path_.parent_path()), "kept");
}

TEST_F(PreferenceStoreLinuxTest, AnUnreadableFileIsLeftAloneAndReadsAsEmpty) {
    write("autoSendEnabled=true\n");
    fs::permissions(path_, fs::perms::none);
    bool const isRoot = geteuid() == 0;
    if (isRoot) {
        fs::permissions(root_, fs::perms::all);
        fs::permissions(path_.parent_path(), fs::perms::all);
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    PreferenceStoreLinux store(path_);
    EXPECT_FALSE(store.boolForKey("autoSendEnabled"));
    store.setBool("terminalModeEnabled", true);
    EXPECT_TRUE(store.boolForKey("terminalModeEnabled"));
    ASSERT_EQ(seteuid(getuid()), 0);
    fs::permissions(path_, fs::perms::owner_read);
    EXPECT_EQ(contentOf(path_), "autoSendEnabled=true\n");
}

TEST_F(PreferenceStoreLinuxTest, ALinkIsFollowed) {
    auto const target = root_ / "dotfiles.ini";
    std::ofstream(target) << "autoSendEnabled=true\n";
    fs::create_directories(path_.parent_path());
    fs::create_symlink(target, path_);
    PreferenceStoreLinux store(path_);
    store.setInteger("terminalModeTarget", 3);
    EXPECT_TRUE(fs::is_symlink(path_));
    EXPECT_EQ(contentOf(target), "autoSendEnabled=true\nterminalModeTarget=3\n");
}

/// A file system of one small page or two. Only root may mount one.
class FullDiskTest : public PreferenceStoreLinuxTest {
protected:
    void SetUp() override {
        fs::create_directories(path_.parent_path());
        isMounted_ = mount("tmpfs", path_.parent_path().c_str(), "tmpfs", 0, "size=16k") == 0;
        if (!isMounted_) GTEST_SKIP() << "needs the right to mount";
    }
    void TearDown() override {
        if (isMounted_) umount(path_.parent_path().c_str());
    }
    void fill() const {
        std::ofstream(path_.parent_path() / "ballast") << std::string(64 * 1024, 'x') << std::flush;
    }
    void makeRoom() const { fs::remove(path_.parent_path() / "ballast"); }

private:
    bool isMounted_ = false;
};

TEST_F(FullDiskTest, LeavesTheOldFileAndKeepsTheValueUntilThereIsRoom) {
    PreferenceStoreLinux store(path_);
    store.setBool("autoSendEnabled", true);
    fill();
    store.setInteger("terminalModeTarget", 3);
    EXPECT_EQ(store.integerForKey("terminalModeTarget"), 3);
    EXPECT_EQ(contentOf(path_), "autoSendEnabled=true\n");
    EXPECT_EQ(fileCount(), 2) << "no temporary file is left";
    makeRoom();
    store.setBool("terminalModeEnabled", true);
    EXPECT_EQ(contentOf(path_),
              "autoSendEnabled=true\nterminalModeEnabled=true\nterminalModeTarget=3\n");
}

TEST_F(FullDiskTest, LeavesABrokenFileWhereItIs) {
    std::string const broken = "autoSendEnabled=true\nbroken\n";
    write(broken);
    fill();
    PreferenceStoreLinux store(path_);
    store.setInteger("terminalModeTarget", 3);
    EXPECT_EQ(store.integerForKey("terminalModeTarget"), 3);
    EXPECT_EQ(contentOf(path_), broken);
    makeRoom();
    store.setInteger("terminalModeTarget", 4);
    EXPECT_EQ(contentOf(path_), "autoSendEnabled=true\nterminalModeTarget=4\n");
    EXPECT_EQ(contentOf(aside()), broken);
}

TEST(PreferencesPathTest, FollowsTheBaseDirectories) {
    ScopedEnvironment const home("HOME", "/home/zoe");
    {
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", "/settings");
        EXPECT_EQ(preferencesPath(), "/settings/trovel/preferences.ini");
    }
    for (auto const* const notAbsolute : {static_cast<char const*>(nullptr), "", "settings"}) {
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", notAbsolute);
        EXPECT_EQ(preferencesPath(), "/home/zoe/.config/trovel/preferences.ini");
    }
}

TEST(PreferencesPathTest, AsksTheUserDatabaseWhereThereIsNoHome) {
    ScopedEnvironment const home("HOME", nullptr);
    ScopedEnvironment const configuration("XDG_CONFIG_HOME", nullptr);
    EXPECT_TRUE(preferencesPath().is_absolute());
    EXPECT_TRUE(preferencesPath().string().ends_with("/.config/trovel/preferences.ini"));
}

} // namespace
} // namespace trovel
