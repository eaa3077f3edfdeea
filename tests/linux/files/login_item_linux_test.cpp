#include "platform/linux/files/login_item_linux.h"

#include "tests/linux/support/scoped_environment.h"
#include "tests/linux/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace trovel {
namespace {

namespace fs = std::filesystem;

class LoginItemLinuxTest : public testing::Test {
protected:
    [[nodiscard]] std::string text() const {
        std::ifstream file(path());
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] fs::path path() const {
        return folder_.path() / "config/autostart/trovel.desktop";
    }
    void write(std::string const& lines) const {
        folder_.write("config/autostart/trovel.desktop", "[Desktop Entry]\n" + lines);
    }
    [[nodiscard]] bool isEnabled() const { return item_.status() == LoginItemStatus::enabled; }

    TemporaryFolder folder_;
    LoginItemLinux item_{path(), "/opt/trovel/bin/trovel"};
};

TEST_F(LoginItemLinuxTest, RegisteringMakesAnEntryAndUnregisteringTakesItAway) {
    EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
    ASSERT_TRUE(item_.registerItem());
    EXPECT_TRUE(isEnabled());
    ASSERT_TRUE(item_.registerItem());
    EXPECT_TRUE(isEnabled());
    EXPECT_NE(text().find("\nType=Application\n"), std::string::npos);
    EXPECT_NE(text().find("\nExec=\"/opt/trovel/bin/trovel\"\n"), std::string::npos);
    ASSERT_TRUE(item_.unregisterItem());
    EXPECT_FALSE(fs::exists(path()));
    EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
    EXPECT_TRUE(item_.unregisterItem());
}

TEST_F(LoginItemLinuxTest, AnEntryThatTheDesktopSwitchedOffIsOff) {
    for (auto const* line :
         {"Hidden=true\n", "Hidden = true \n", "X-GNOME-Autostart-enabled=false\n"}) {
        ASSERT_TRUE(item_.registerItem());
        std::ofstream(path(), std::ios::trunc) << "[Desktop Entry]\nExec=/opt/trovel/bin/trovel\n"
                                               << line;
        EXPECT_FALSE(isEnabled()) << line;
        ASSERT_TRUE(item_.registerItem());
        EXPECT_TRUE(isEnabled()) << line;
    }
}

TEST_F(LoginItemLinuxTest, EntriesInOtherHandsCountWhenTheyStartThisProgram) {
    for (auto const* exec : {"/opt/trovel/bin/trovel", "/opt/trovel/bin/trovel --quiet",
                             "\"/opt/trovel/bin/trovel\"", "trovel"}) {
        write(std::string("Exec = ") + exec + "\n");
        EXPECT_TRUE(isEnabled()) << exec;
    }
    for (auto const* exec : {"/opt/trovel/bin/trovel2", "/usr/bin/true", "", "\"trovel2\""}) {
        write(std::string("Exec=") + exec + "\n");
        EXPECT_FALSE(isEnabled()) << exec;
    }
    write("Exec=/usr/bin/true\n[Other]\nExec=/opt/trovel/bin/trovel\n");
    EXPECT_FALSE(isEnabled());
}

TEST_F(LoginItemLinuxTest, EveryPathSurvivesTheQuoting) {
    for (std::string const program :
         {"/home/an n/trovel", "/a\"b/trovel", "/a\\b/trovel", "/a$b`c/trovel", "/100%/trovel",
          "/a%f/trovel", "/line\nbreak/trovel", "/\xc3\xbc/trovel"}) {
        LoginItemLinux item(path(), program);
        ASSERT_TRUE(item.registerItem());
        EXPECT_EQ(item.status(), LoginItemStatus::enabled) << program << "\n" << text();
    }
    LoginItemLinux item(path(), "/a\"b\\c$d/trovel");
    ASSERT_TRUE(item.registerItem());
    EXPECT_NE(text().find(R"(Exec="/a\\"b\\\\c\\$d/trovel")"), std::string::npos) << text();
}

TEST_F(LoginItemLinuxTest, AFailureIsTheSystemsSentence) {
    folder_.write("config", "a file where the folder should be");
    auto const result = item_.registerItem();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), "Not a directory");
    EXPECT_FALSE(isEnabled());
}

TEST(AutostartEntryPathTest, FollowsTheConfigurationFolder) {
    ScopedEnvironment const home("HOME", "/home/ann");
    {
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", "/elsewhere");
        EXPECT_EQ(autostartEntryPath(), "/elsewhere/autostart/trovel.desktop");
    }
    for (auto const* useless : {"relative", ""}) {
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", useless);
        EXPECT_EQ(autostartEntryPath(), "/home/ann/.config/autostart/trovel.desktop");
    }
}

} // namespace
} // namespace trovel
