#include "platform/linux/files/desktop_file.h"

#include "tests/linux/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

using Keys = std::vector<std::pair<std::string, std::string>>;

Keys keysOf(std::string const& text) {
    TemporaryFolder const folder;
    folder.write("a.desktop", text);
    Keys keys;
    EXPECT_TRUE(readDesktopFile(folder.path() / "a.desktop",
                                [&](auto key, auto value) { keys.emplace_back(key, value); }));
    return keys;
}

TEST(DesktopFile, ShowsTheKeysOfTheMainGroupInTheirOrder) {
    EXPECT_THAT(keysOf("Before=1\n"
                       "[Desktop Entry]\n"
                       "Name=A b\n"
                       " Exec = \"/a b\" %u \r\n"
                       "# Icon=x\n"
                       "\n"
                       "no key\n"
                       "Empty=\n"
                       "Comment=a=b\n"
                       "[Desktop Action new]\n"
                       "Name=New\n"
                       "[Desktop Entry]\n"
                       "Last=without a line end"),
                ElementsAre(Pair("Name", "A b"), Pair("Exec", "\"/a b\" %u"), Pair("Empty", ""),
                            Pair("Comment", "a=b"), Pair("Last", "without a line end")));
}

TEST(DesktopFile, OnlyTheBeginningOfALongFileCounts) {
    std::string const start = "[Desktop Entry]\nName=A\n#";
    EXPECT_THAT(keysOf(start + std::string(60'000, 'x') + "\nIcon=b\n"), SizeIs(2));
    EXPECT_THAT(keysOf(start + std::string(70'000, 'x') + "\nIcon=b\n"), SizeIs(1));
}

TEST(DesktopFile, AFileThatCannotBeReadIsNone) {
    TemporaryFolder const folder;
    EXPECT_FALSE(readDesktopFile(folder.path() / "none.desktop",
                                 [](auto key, auto) { ADD_FAILURE() << key; }));
}

TEST(DesktopFile, TheProgramIsTheFirstWordOfExec) {
    for (auto const& [exec, program] :
         {std::pair("zoom", "zoom"), std::pair("/usr/bin/zoom %U", "/usr/bin/zoom"),
          std::pair(R"("/opt/a b/zoom" --x "y")", "/opt/a b/zoom"), std::pair("", ""),
          std::pair(R"("/a\\"b\\\\c\\$d")", R"(/a"b\c$d)"), std::pair("/100%%/zoom", "/100%/zoom"),
          std::pair(R"("/a\sb")", "/a b")}) {
        EXPECT_EQ(programOfExec(exec), program) << exec;
    }
}

} // namespace
} // namespace trovel
