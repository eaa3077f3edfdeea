#include "delivery/capture_files.h"

#include "tests/support/desktop_test.h"

#include <string>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

FileSystem::Date at(std::chrono::nanoseconds sinceEpoch) {
    return FileSystem::Date(sinceEpoch);
}

/// Other files, which count how often a folder is listed.
class CountedFiles final : public FileSystem {
public:
    explicit CountedFiles(FileSystem& files) : files_(files) {}

    [[nodiscard]] std::string homeDirectory() const override { return files_.homeDirectory(); }
    [[nodiscard]] bool createDirectory(std::string_view path) override {
        return files_.createDirectory(path);
    }
    [[nodiscard]] bool writeFile(std::string_view path,
                                 std::span<std::uint8_t const> contents) override {
        return files_.writeFile(path, contents);
    }
    [[nodiscard]] bool fileExists(std::string_view path) const override {
        return files_.fileExists(path);
    }
    [[nodiscard]] std::optional<std::vector<std::string>>
    contentsOfDirectory(std::string_view path) const override {
        ++listings;
        return files_.contentsOfDirectory(path);
    }
    [[nodiscard]] std::optional<Date> creationDate(std::string_view path) const override {
        ++dates;
        return files_.creationDate(path);
    }
    bool removeItem(std::string_view path) override { return files_.removeItem(path); }

    mutable int listings = 0;
    mutable int dates = 0;

private:
    FileSystem& files_;
};

class CaptureFilesTest : public DesktopTest {
protected:
    CaptureFilesTest() { EXPECT_TRUE(desktop.files.createDirectory(folder)); }

    void put(std::string const& name, std::optional<FileSystem::Date> date) {
        desktop.files.put(folder + "/" + name, date);
    }
    /// So many captures, one a second, the first at 1000 s.
    void putCaptures(int count) {
        for (int index = 0; index < count; ++index) {
            put("Trovel-" + std::to_string(1000 + index) + ".png", at(1000s + index * 1s));
        }
    }
    std::vector<std::string> names() {
        std::vector<std::string> found;
        for (auto const& [path, file] : desktop.files.files()) {
            found.push_back(path.substr(path.rfind('/') + 1));
        }
        return found;
    }
    void prune(std::size_t keep) { pruneCaptures(desktop.files, folder, keep); }

    std::string const folder = "/homes/ann/.trovel/captures";
};

TEST_F(CaptureFilesTest, TheFolderLiesHiddenInTheHomeFolder) {
    EXPECT_EQ(capturesFolder(desktop.files), folder);
    desktop.files.setHome("/home/bob");
    EXPECT_EQ(capturesFolder(desktop.files), "/home/bob/.trovel/captures");
}

TEST_F(CaptureFilesTest, AFileIsNamedByWholeMilliseconds) {
    EXPECT_EQ(captureFileName(at(1731700000123ms)), "Trovel-1731700000123.png");
    EXPECT_EQ(captureFileName(at(1731700000123ms + 999999ns)), "Trovel-1731700000123.png");
    EXPECT_EQ(captureFileName(at(0ms)), "Trovel-0.png");
    EXPECT_EQ(captureFileName(at(-1500us)), "Trovel--1.png"); // towards zero
}

TEST_F(CaptureFilesTest, TheFolderIsListedOnceAndNothingElseIsAskedAboutOtherFiles) {
    putCaptures(52);
    for (int index = 0; index < 100; ++index) put(std::to_string(index) + ".txt", at(1s));
    CountedFiles files(desktop.files);
    pruneCaptures(files, folder, 50);
    EXPECT_EQ(files.listings, 1);
    EXPECT_EQ(files.dates, 52);
    EXPECT_EQ(names().size(), 150U);
}

TEST_F(CaptureFilesTest, FiftyFilesStay) {
    putCaptures(50);
    CountedFiles files(desktop.files);
    pruneCaptures(files, folder, 50);
    EXPECT_EQ(files.dates, 0);
    EXPECT_EQ(names().size(), 50U);
    EXPECT_EQ(desktop.journal.count<effect::FileRemoved>(), 0U);
}

TEST_F(CaptureFilesTest, OfFiftyOneTheOldestByCreationDateGoes) {
    putCaptures(50);
    put("a.png", at(10s));
    prune(50);
    EXPECT_EQ(names().size(), 50U);
    EXPECT_THAT(names(), Not(Contains("a.png")));
}

TEST_F(CaptureFilesTest, EverythingBeyondTheNewestGoes) {
    putCaptures(5);
    prune(2);
    EXPECT_THAT(names(), ElementsAre("Trovel-1003.png", "Trovel-1004.png"));
}

TEST_F(CaptureFilesTest, TheDateDecidesAndNotTheName) {
    put("z.png", at(1s));
    put("a.png", at(3s));
    put("m.png", at(2s));
    prune(1);
    EXPECT_THAT(names(), ElementsAre("a.png"));
}

TEST_F(CaptureFilesTest, OnlyFilesThatEndInPngCountWhateverTheirCase) {
    putCaptures(2);
    put("old.PNG", at(1s));
    put("older.Png", at(500ms));
    put("v1.2.png", at(1s));
    put("notes.txt", at(1s));
    put("png", at(1s));
    put("a.png.bak", at(1s));
    put("a.jpng", at(1s));
    prune(2);
    EXPECT_THAT(names(), UnorderedElementsAre("Trovel-1000.png", "Trovel-1001.png", "notes.txt",
                                              "png", "a.png.bak", "a.jpng"));
}

TEST_F(CaptureFilesTest, OtherFilesNeverMakeACaptureGo) {
    putCaptures(2);
    for (int index = 0; index < 60; ++index) put(std::to_string(index) + ".txt", at(5000s));
    prune(2);
    EXPECT_EQ(names().size(), 62U);
}

TEST_F(CaptureFilesTest, HiddenFilesAreNeitherCountedNorRemoved) {
    putCaptures(2);
    put(".hidden.png", at(1s));
    put(".png", at(1s));
    prune(2);
    EXPECT_EQ(names().size(), 4U);
}

TEST_F(CaptureFilesTest, AFileWithoutADateIsTheOldest) {
    put("undated.png", std::nullopt);
    put("first.png", at(-100s));
    put("second.png", at(1s));
    prune(2);
    EXPECT_THAT(names(), UnorderedElementsAre("first.png", "second.png"));
}

TEST_F(CaptureFilesTest, AmongEqualDatesTheGreaterNameStays) {
    put("b.png", at(1s));
    put("c.png", at(1s));
    put("a.png", at(1s));
    prune(1);
    EXPECT_THAT(names(), ElementsAre("c.png"));
}

TEST_F(CaptureFilesTest, AFileThatCannotBeRemovedDoesNotKeepTheOthers) {
    putCaptures(4);
    desktop.files.put(folder + "/Trovel-1001.png", at(1001s)).isStuck = true;
    prune(1);
    EXPECT_THAT(names(), ElementsAre("Trovel-1001.png", "Trovel-1003.png"));
}

TEST_F(CaptureFilesTest, AFolderThatCannotBeListedIsLeftAlone) {
    putCaptures(5);
    desktop.faults.failAlways(Operation::listFolder);
    prune(1);
    EXPECT_EQ(names().size(), 5U);
    pruneCaptures(desktop.files, "/nowhere", 1);
}

} // namespace
} // namespace trovel
