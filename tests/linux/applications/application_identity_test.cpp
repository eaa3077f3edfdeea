#include "platform/linux/applications/application_identity.h"

#include "tests/linux/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace trovel {
namespace {

class ApplicationIdentityTest : public testing::Test {
protected:
    void install(std::string const& id, std::string const& lines) const {
        folder_.write("applications/" + id, "[Desktop Entry]\nType=Application\n" + lines);
    }

    [[nodiscard]] ApplicationIdentity identity(WindowProperties const& properties) const {
        ApplicationIdentities identities({folder_.path()});
        identities.refresh();
        return identities.of(properties);
    }

    [[nodiscard]] std::string identifier(WindowProperties const& properties) const {
        return identity(properties).bundleIdentifier.value_or("none");
    }

    TemporaryFolder folder_;
};

TEST_F(ApplicationIdentityTest, TheGtkIdentifierComesFirst) {
    install("org.example.Paint.desktop", "Name=Paint\n");
    install("other.desktop", "Name=Other\nStartupWMClass=Shared\n");
    auto const found = identity({.gtkApplicationId = "org.example.Paint", .className = "Shared"});
    EXPECT_EQ(found, (ApplicationIdentity{"org.example.Paint.desktop", "org.example.Paint.desktop",
                                          "Paint"}));
    EXPECT_EQ(identifier({.gtkApplicationId = "not.installed", .className = "Shared"}),
              "other.desktop");
    EXPECT_EQ(identifier({.gtkApplicationId = "not.installed", .className = "x"}),
              "not.installed.desktop");
}

TEST_F(ApplicationIdentityTest, TheStartupClassIsComparedWithInstanceAndClass) {
    install("browser.desktop", "Name=Browser\nStartupWMClass=Browser-class\n");
    install("webapp.desktop", "Name=Web app\nStartupWMClass=crx_abc\n");
    EXPECT_EQ(identifier({.instance = "browser", .className = "browser-CLASS"}), "browser.desktop");
    EXPECT_EQ(identifier({.instance = "crx_abc", .className = "Browser-class"}), "webapp.desktop");
}

TEST_F(ApplicationIdentityTest, AWebAppWithoutAnEntryIsNotTheBrowser) {
    install("chromium.desktop", "Name=Chromium\nStartupWMClass=chromium\n");
    EXPECT_EQ(identity({.instance = "crx_abc", .className = "chromium"}),
              (ApplicationIdentity{"crx_abc.desktop", "crx_abc.desktop", "crx_abc"}));
}

TEST_F(ApplicationIdentityTest, TheDesktopIdIsComparedWithClassAndInstance) {
    install("gedit.desktop", "Name=Text Editor\n");
    EXPECT_EQ(identity({.instance = "x", .className = "Gedit"}),
              (ApplicationIdentity{"gedit.desktop", "gedit.desktop", "Text Editor"}));
    EXPECT_EQ(identifier({.instance = "gedit", .className = "Y"}), "gedit.desktop");
}

TEST_F(ApplicationIdentityTest, TheExecutableIsTheLastHint) {
    auto const executable = std::filesystem::read_symlink("/proc/self/exe").filename().string();
    WindowProperties const self{.className = "Unknown", .systemProcess = getpid()};
    EXPECT_EQ(identifier(self), "Unknown.desktop");
    EXPECT_EQ(identifier({.systemProcess = getpid()}), executable + ".desktop");
    install("tests.desktop", "Name=Tests\nExec=/usr/bin/" + executable + " %f\n");
    EXPECT_EQ(identifier(self), "tests.desktop");
    // An unused process identifier, and one that cannot be.
    EXPECT_EQ(identifier({.className = "C", .systemProcess = 0x7fffffff}), "C.desktop");
    EXPECT_EQ(identifier({.className = "C", .systemProcess = -1}), "C.desktop");
}

TEST_F(ApplicationIdentityTest, OfAWindowThatSaysNothingNothingIsKnown) {
    EXPECT_EQ(identity({}), (ApplicationIdentity{}));
}

TEST_F(ApplicationIdentityTest, KnownProgramsHaveTheirMakersIdentifier) {
    std::pair<char const*, char const*> const expected[] = {
        {"Google-chrome", "com.google.Chrome"},
        {"Chromium", "com.google.Chrome"},
        {"chromium-browser", "com.google.Chrome"},
        {"firefox", "org.mozilla.firefox"},
        {"firefox-esr", "org.mozilla.firefox"},
        {"Microsoft-edge", "com.microsoft.edgemac"},
        {"Claude", "com.anthropic.claudefordesktop"},
        {"claude-desktop", "com.anthropic.claudefordesktop"},
        {"com.anthropic.Claude", "com.anthropic.claudefordesktop"},
        {"Code", "com.microsoft.VSCode"},
        {"Cursor", "com.todesktop.230313mzl4w4u92"},
        {"dev.warp.Warp", "dev.warp.Warp-Stable"},
        {"XTerm", "XTerm.desktop"},
        {"Alacritty", "Alacritty.desktop"},
        {"librewolf", "librewolf.desktop"},
        {"com.google.Chromecast", "com.google.Chromecast.desktop"},
    };
    for (auto const& [className, bundleIdentifier] : expected) {
        EXPECT_EQ(identifier({.className = className}), bundleIdentifier) << className;
    }
}

TEST_F(ApplicationIdentityTest, KnownProgramsKeepApartWhatTheyAre) {
    install("chromium.desktop", "Name=Chromium Web Browser\n");
    install("google-chrome.desktop", "Name=Google Chrome\n");
    auto const chromium = identity({.className = "Chromium"});
    auto const chrome = identity({.className = "Google-chrome"});
    EXPECT_EQ(chromium.bundleIdentifier, chrome.bundleIdentifier);
    EXPECT_NE(chromium.key, chrome.key);
    EXPECT_EQ(chromium.name, "Chromium Web Browser");
}

TEST_F(ApplicationIdentityTest, AChatIsKnownByTheNameOfItsEntry) {
    std::pair<char const*, char const*> const expected[] = {
        {"Claude", "com.anthropic.claudefordesktop"},
        {"ChatGPT", "com.openai.chat"},
        {"Gemini", "com.google.Gemini"},
        {"Perplexity", "com.perplexity"},
        {"Copilot", "com.microsoft.copilot"},
        {"chatgpt", "chrome-abc-Default.desktop"}};
    for (auto const& [name, bundleIdentifier] : expected) {
        install("chrome-abc-Default.desktop",
                std::string("StartupWMClass=crx_abc\nName=").append(name).append("\n"));
        EXPECT_EQ(identifier({.instance = "crx_abc", .className = "Google-chrome"}),
                  bundleIdentifier);
    }
}

TEST_F(ApplicationIdentityTest, AnEntryPickedByHandHasTheIdentityOfItsWindows) {
    install("code.desktop", "Name=Visual Studio Code\nStartupWMClass=Code\n");
    DesktopEntries entries({folder_.path()});
    entries.refresh();
    EXPECT_EQ(identityOf(*entries.withId("code.desktop")), identity({.className = "Code"}));
}

TEST_F(ApplicationIdentityTest, AnEntryThatComesLaterIsFound) {
    ApplicationIdentities identities({folder_.path()});
    identities.refresh();
    EXPECT_EQ(identities.of({.className = "Foo"}).name, "Foo");
    install("foo.desktop", "Name=The Foo\n");
    identities.refresh();
    EXPECT_EQ(identities.of({.className = "Foo"}).name, "The Foo");
}

} // namespace
} // namespace trovel
