#include "platform/linux/files/user_folders.h"

#include "tests/linux/support/scoped_environment.h"

#include <gtest/gtest.h>

#include <utility>

namespace trovel {
namespace {

using Paths = std::vector<std::filesystem::path>;

TEST(UserFolders, TheHomeFolderIsTheEnvironmentsWithoutASlashAtTheEnd) {
    for (auto const& [variable, home] :
         {std::pair("/home/ann", "/home/ann"), std::pair("/home/ann//", "/home/ann"),
          std::pair("/", "/")}) {
        ScopedEnvironment const environment("HOME", variable);
        EXPECT_EQ(homeFolder().string(), home);
    }
}

TEST(UserFolders, WithoutAHomeInTheEnvironmentTheListOfUsersHasIt) {
    for (auto const* const useless : {static_cast<char const*>(nullptr), ""}) {
        ScopedEnvironment const home("HOME", useless);
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", nullptr);
        EXPECT_TRUE(homeFolder().is_absolute());
        EXPECT_EQ(configurationFolder(), homeFolder() / ".config");
    }
}

TEST(UserFolders, SettingsAreWhereTheEnvironmentHasThem) {
    ScopedEnvironment const home("HOME", "/home/ann");
    {
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", "/settings");
        EXPECT_EQ(configurationFolder(), "/settings");
    }
    for (auto const* const useless : {static_cast<char const*>(nullptr), "", "settings"}) {
        ScopedEnvironment const configuration("XDG_CONFIG_HOME", useless);
        EXPECT_EQ(configurationFolder(), "/home/ann/.config");
    }
}

TEST(UserFolders, DataComesFromTheUsersFolderFirstAndFromAbsolutePathsOnly) {
    ScopedEnvironment const home("HOME", "/home/ann");
    {
        ScopedEnvironment const user("XDG_DATA_HOME", "/data");
        ScopedEnvironment const system("XDG_DATA_DIRS", "/one:relative::/two");
        EXPECT_EQ(dataFolders(), (Paths{"/data", "/one", "/two"}));
    }
    for (auto const* const useless : {static_cast<char const*>(nullptr), "", "data"}) {
        ScopedEnvironment const user("XDG_DATA_HOME", useless);
        ScopedEnvironment const system("XDG_DATA_DIRS", "");
        EXPECT_EQ(dataFolders(),
                  (Paths{"/home/ann/.local/share", "/usr/local/share", "/usr/share"}));
    }
}

} // namespace
} // namespace trovel
