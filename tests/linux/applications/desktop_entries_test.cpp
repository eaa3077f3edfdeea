#include "platform/linux/applications/desktop_entries.h"

#include "tests/linux/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>

namespace trovel {
namespace {

class DesktopEntriesTest : public testing::Test {
protected:
    /// A file in the user's folder, which comes before the system's.
    void writeUser(std::string const& place, std::string const& lines) const {
        folder_.write("user/applications/" + place, "[Desktop Entry]\nType=Application\n" + lines);
    }
    void writeSystem(std::string const& place, std::string const& lines) const {
        folder_.write("system/applications/" + place,
                      "[Desktop Entry]\nType=Application\n" + lines);
    }

    [[nodiscard]] DesktopEntries entries() const {
        return DesktopEntries({folder_.path() / "user", folder_.path() / "system"});
    }

    TemporaryFolder folder_;
};

TEST_F(DesktopEntriesTest, AnEntrySaysWhatTheProgramIs) {
    writeUser("editor.desktop", "Name=Editor\nName[de]=Schreiber\nStartupWMClass = Ed\n"
                                "Exec=/opt/ed/run-editor %U\n[Desktop Action New]\nName=New\n");
    auto entries = this->entries();
    EXPECT_TRUE(entries.refresh());
    auto const* const entry = entries.withId("editor.desktop");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->id, "editor.desktop");
    EXPECT_EQ(entry->name, "Editor");
    EXPECT_EQ(entry->startupClass, "Ed");
    EXPECT_EQ(entry->executable, "run-editor");
    EXPECT_TRUE(entry->isShown);
    EXPECT_EQ(entries.withId("Editor.Desktop"), entry);
    EXPECT_EQ(entries.withStartupClass("eD"), entry);
    EXPECT_EQ(entries.soleWithExecutable("run-editor"), entry);
    EXPECT_EQ(entries.withId("other.desktop"), nullptr);
    EXPECT_EQ(entries.withStartupClass(""), nullptr);
}

TEST_F(DesktopEntriesTest, FoldersBelowArePartOfTheId) {
    writeUser("kde/tools/zoom.desktop", "Name=Zoom\n");
    auto entries = this->entries();
    entries.refresh();
    ASSERT_NE(entries.withId("kde-tools-zoom.desktop"), nullptr);
    EXPECT_EQ(entries.withId("kde-tools-zoom.desktop")->id, "kde-tools-zoom.desktop");
}

TEST_F(DesktopEntriesTest, TheUsersEntryCountsAndAHiddenOneHidesTheSystems) {
    writeUser("a.desktop", "Name=Mine\n");
    writeSystem("a.desktop", "Name=Theirs\n");
    writeUser("b.desktop", "Hidden=true\n");
    writeSystem("b.desktop", "Name=Deleted\nStartupWMClass=b\n");
    auto entries = this->entries();
    entries.refresh();
    EXPECT_EQ(entries.withId("a.desktop")->name, "Mine");
    EXPECT_EQ(entries.withId("b.desktop"), nullptr);
    EXPECT_EQ(entries.withStartupClass("b"), nullptr);
}

TEST_F(DesktopEntriesTest, OfOneClassTheShownEntryIsMeant) {
    writeUser("a-handler.desktop", "Name=Handler\nNoDisplay=true\nStartupWMClass=Code\n");
    writeUser("code.desktop", "Name=Code\nStartupWMClass=Code\n");
    writeUser("z.desktop", "Name=Z\nStartupWMClass=Code\n");
    auto entries = this->entries();
    entries.refresh();
    EXPECT_EQ(entries.withStartupClass("Code")->id, "code.desktop");
}

TEST_F(DesktopEntriesTest, AProgramOfSeveralEntriesNamesNone) {
    writeUser("a.desktop", "Name=A\nExec=suite --a\n");
    writeUser("b.desktop", "Name=B\nExec=\"/opt/the suite/suite\" --b\n");
    writeUser("hidden.desktop", "Name=C\nNoDisplay=true\nExec=lonely\n");
    auto entries = this->entries();
    entries.refresh();
    EXPECT_EQ(entries.soleWithExecutable("suite"), nullptr);
    EXPECT_EQ(entries.soleWithExecutable("lonely"), nullptr);
}

TEST_F(DesktopEntriesTest, EntriesAreReadAgainWhenAFolderChanges) {
    writeUser("a.desktop", "Name=A\n");
    auto entries = this->entries();
    EXPECT_TRUE(entries.refresh());
    EXPECT_FALSE(entries.refresh());
    // A folder that was not there yet counts as well.
    writeSystem("deep/b.desktop", "Name=B\n");
    EXPECT_TRUE(entries.refresh());
    EXPECT_NE(entries.withId("deep-b.desktop"), nullptr);
    std::filesystem::remove(folder_.path() / "system/applications/deep/b.desktop");
    std::filesystem::last_write_time(folder_.path() / "system/applications/deep",
                                     std::filesystem::file_time_type{} + std::chrono::hours(1));
    EXPECT_TRUE(entries.refresh());
    EXPECT_EQ(entries.withId("deep-b.desktop"), nullptr);
}

TEST_F(DesktopEntriesTest, FilesThatAreNoApplicationsAreLeftOut) {
    folder_.write("user/applications/link.desktop", "[Desktop Entry]\nType=Link\nName=L\n");
    folder_.write("user/applications/empty.desktop", "");
    folder_.write("user/applications/text.txt", "[Desktop Entry]\nType=Application\nName=T\n");
    folder_.write("user/applications/noise.desktop", std::string(1 << 20, '\xfe'));
    std::filesystem::create_directories(folder_.path() / "user/applications/folder.desktop");
    std::filesystem::create_symlink("/nowhere", folder_.path() / "user/applications/gone.desktop");
    std::filesystem::create_directory_symlink(folder_.path() / "user/applications",
                                              folder_.path() / "user/applications/circle");
    auto entries = this->entries();
    EXPECT_TRUE(entries.refresh());
    for (auto const* id : {"link.desktop", "empty.desktop", "text.txt", "noise.desktop",
                           "folder.desktop", "gone.desktop"}) {
        EXPECT_EQ(entries.withId(id), nullptr) << id;
    }
}

} // namespace
} // namespace trovel
