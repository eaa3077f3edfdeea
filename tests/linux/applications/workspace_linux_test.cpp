#include "platform/linux/applications/workspace_linux.h"

#include "platform/linux/applications/application_groups.h"
#include "platform/linux/x11/window_source_x11.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/support/scoped_environment.h"
#include "tests/linux/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kOwnProcess = 4242;

class WorkspaceLinuxTest : public testing::Test {
protected:
    void install(std::string const& id, std::string const& lines) const {
        folder_.write("applications/" + id, "[Desktop Entry]\nType=Application\n" + lines);
    }

    [[nodiscard]] std::vector<std::string> identifiers() const {
        std::vector<std::string> identifiers;
        for (auto const& application : workspace_.runningApplications()) {
            identifiers.push_back(application.bundleIdentifier.value_or("none"));
        }
        return identifiers;
    }

    [[nodiscard]] std::vector<std::string> identifiersWith(std::string_view identifier) const {
        std::vector<std::string> found;
        for (auto const& application :
             workspace_.runningApplicationsWithBundleIdentifier(identifier)) {
            found.push_back(application.bundleIdentifier.value_or("none"));
        }
        return found;
    }

    [[nodiscard]] std::string frontmost() const {
        auto const application = workspace_.frontmostApplication();
        return application ? application->bundleIdentifier.value_or("unknown") : "none";
    }

    /// The only application that runs.
    [[nodiscard]] RunningApplication sole() const {
        auto const applications = workspace_.runningApplications();
        EXPECT_EQ(applications.size(), 1u);
        return applications.empty() ? RunningApplication{} : applications[0];
    }

    TestDisplay display_;
    TemporaryFolder folder_;
    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    WindowSourceX11 windows_{*connection_};
    ApplicationGroups groups_{windows_, {folder_.path()}, kOwnProcess};
    int explanations_ = 0;
    WorkspaceLinux workspace_{groups_, [this] { ++explanations_; }};
    OtherProgram other_;
};

TEST_F(WorkspaceLinuxTest, AnApplicationIsTheWindowsOfOneIdentityInTheOrderOfTheList) {
    WindowManagerTraces manager(other_);
    auto const second = other_.open({.className = "Beta"});
    auto const first = other_.open({.className = "Alpha"});
    auto const third = other_.open({.className = "Beta"});
    manager.list({first, second, third}, {});
    EXPECT_THAT(identifiers(), ElementsAre("Alpha.desktop", "Beta.desktop"));
    manager.list({second, first, third}, {});
    EXPECT_THAT(identifiers(), ElementsAre("Beta.desktop", "Alpha.desktop"));
}

TEST_F(WorkspaceLinuxTest, OneProcessMayBeTwoApplications) {
    WindowManagerTraces manager(other_);
    auto const browser =
        other_.open({.instance = "google-chrome", .className = "Google-chrome", .process = 77});
    auto const webApp =
        other_.open({.instance = "crx_abc", .className = "Google-chrome", .process = 77});
    manager.list({browser, webApp}, {});
    auto const applications = workspace_.runningApplications();
    ASSERT_EQ(applications.size(), 2u);
    EXPECT_EQ(applications[0].bundleIdentifier, "com.google.Chrome");
    EXPECT_EQ(applications[1].bundleIdentifier, "crx_abc.desktop");
    EXPECT_NE(applications[0].processIdentifier, applications[1].processIdentifier);
}

TEST_F(WorkspaceLinuxTest, TwoOfOneNameAreNamedApart) {
    install("notes.desktop", "Name=Notes\n");
    install("org.other.notes.desktop", "Name=Notes\n");
    WindowManagerTraces manager(other_);
    auto const one = other_.open({.className = "Notes"});
    auto const two = other_.open({.className = "org.other.Notes"});
    manager.list({one, two}, {});
    auto const applications = workspace_.runningApplications();
    ASSERT_EQ(applications.size(), 2u);
    EXPECT_EQ(applications[0].localizedName, "Notes");
    EXPECT_EQ(applications[1].localizedName, "Notes (org.other.notes.desktop)");
    // A name is kept by who has it, whatever the order becomes.
    manager.list({two, one}, {});
    EXPECT_EQ(workspace_.runningApplications()[0], applications[1]);
    // The plain name is free again when its owner is gone, but only for a newcomer.
    manager.list({two}, {});
    EXPECT_EQ(sole().localizedName, "Notes (org.other.notes.desktop)");
    manager.list({two, one}, {});
    EXPECT_EQ(workspace_.runningApplications()[1].localizedName, "Notes");
}

TEST_F(WorkspaceLinuxTest, ANumberLastsAsLongAsTheApplicationHasAWindow) {
    WindowManagerTraces manager(other_);
    auto const one = other_.open({.className = "Alpha"});
    auto const two = other_.open({.className = "Alpha"});
    manager.list({one}, {});
    auto const number = sole().processIdentifier;
    EXPECT_GT(number, 0);
    manager.list({one, two}, {});
    EXPECT_EQ(sole().processIdentifier, number);
    manager.list({two}, {});
    EXPECT_EQ(sole().processIdentifier, number);
    manager.list({}, {});
    EXPECT_THAT(identifiers(), IsEmpty());
    manager.list({one}, {});
    EXPECT_NE(sole().processIdentifier, number);
}

TEST_F(WorkspaceLinuxTest, WindowsThatVanishedAreLeftOut) {
    WindowManagerTraces manager(other_);
    auto const gone = other_.open({.className = "Alpha"});
    auto const kept = other_.open({.className = "Beta"});
    manager.list({gone, kept, 0x1234567}, {kept, gone});
    manager.activate(gone);
    other_.close(gone);
    EXPECT_THAT(identifiers(), ElementsAre("Beta.desktop"));
    EXPECT_EQ(frontmost(), "none");
}

TEST_F(WorkspaceLinuxTest, HostileNamesAreCutAndCleaned) {
    WindowManagerTraces manager(other_);
    auto const window = other_.open({.className = "x"});
    manager.list({window}, {});
    std::pair<std::string, std::string> const expected[] = {
        {std::string("i\0a\xff\nb\0", 7), "a\uFFFD b"},
        {std::string("i\0say \"x\" \\\0", 12), "say 'x' /"},
        {std::string("only one part"), "only one part"},
        {std::string("i\0%s<b>\0more\0", 13), "%s<b>"},
    };
    for (auto const& [bytes, name] : expected) {
        other_.setText(window, "WM_CLASS", bytes);
        EXPECT_EQ(sole().localizedName, name);
        EXPECT_EQ(sole().bundleIdentifier, name + ".desktop");
    }
    other_.setText(window, "WM_CLASS", std::string(1 << 20, 'y'));
    other_.setText(window, "_NET_WM_NAME", std::string(1 << 20, 'z'));
    EXPECT_EQ(sole().localizedName, std::string(256, 'y'));
    other_.setText(window, "WM_CLASS", "");
    EXPECT_EQ(sole().localizedName, std::nullopt);
    EXPECT_EQ(sole().bundleIdentifier, std::nullopt);
    // Properties of the wrong kind say nothing.
    other_.setNumbers(window, "WM_CLASS", XCB_ATOM_CARDINAL, {1, 2, 3});
    other_.setText(window, "_NET_WM_PID", "text");
    other_.setText(window, "_NET_WM_WINDOW_TYPE", "text");
    EXPECT_EQ(sole().bundleIdentifier, std::nullopt);
}

TEST_F(WorkspaceLinuxTest, WindowsThatSayNothingAreApplicationsOfTheirOwn) {
    WindowManagerTraces manager(other_);
    auto const one = other_.open();
    auto const two = other_.open();
    manager.list({one, two}, {});
    EXPECT_THAT(identifiers(), ElementsAre("none", "none"));
}

TEST_F(WorkspaceLinuxTest, FurnitureOfTheDesktopIsNoApplication) {
    WindowManagerTraces manager(other_);
    std::vector<xcb_window_t> windows;
    for (auto const* type : {"DOCK", "DESKTOP", "NOTIFICATION", "TOOLTIP"}) {
        windows.push_back(other_.open({.className = type, .types = {type}}));
    }
    windows.push_back(other_.open({.className = "Real", .types = {"X_UNKNOWN", "NORMAL", "DOCK"}}));
    manager.list(windows, windows);
    EXPECT_THAT(identifiers(), ElementsAre("Real.desktop"));
    manager.activate(windows[0]);
    EXPECT_EQ(frontmost(), "none");
}

TEST_F(WorkspaceLinuxTest, OnlyANormalWindowInTheTaskbarMakesAnApplicationRegular) {
    WindowManagerTraces manager(other_);
    auto const transient = other_.open({.className = "Transient"});
    std::vector<xcb_window_t> windows{
        other_.open({.className = "Plain"}),
        other_.open({.className = "Dialog", .types = {"DIALOG"}}),
        transient,
        other_.open({.className = "Hidden", .states = {"ABOVE", "SKIP_TASKBAR"}}),
        other_.open({.className = "Own", .process = kOwnProcess}),
        other_.open({.className = "Mixed", .types = {"UTILITY"}}),
        other_.open({.className = "Mixed", .types = {"NORMAL"}}),
    };
    other_.setNumbers(transient, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW, {windows[0]});
    manager.list(windows, windows);
    std::vector<std::string> regular;
    for (auto const& application : workspace_.runningApplications()) {
        if (application.activationPolicy == ActivationPolicy::regular) {
            regular.push_back(*application.bundleIdentifier);
        }
    }
    EXPECT_THAT(regular, ElementsAre("Plain.desktop", "Mixed.desktop"));
    EXPECT_EQ(workspace_.runningApplications().size(), 6u);
}

TEST_F(WorkspaceLinuxTest, TheFrontmostApplicationIsThatOfTheActiveWindow) {
    WindowManagerTraces manager(other_);
    auto const one = other_.open({.className = "Alpha"});
    auto const two = other_.open({.className = "Beta"});
    manager.list({one, two}, {one, two});
    EXPECT_EQ(frontmost(), "none");
    manager.activate(one);
    EXPECT_EQ(frontmost(), "Alpha.desktop");
    EXPECT_EQ(workspace_.frontmostApplication(), workspace_.runningApplications()[0]);
    manager.activate(two);
    EXPECT_EQ(frontmost(), "Beta.desktop");
}

TEST_F(WorkspaceLinuxTest, AProcessOfAnotherMachineIsNotLookedUpHere) {
    WindowManagerTraces manager(other_);
    auto const window = other_.open({.process = static_cast<std::uint32_t>(getpid())});
    manager.list({window}, {});
    EXPECT_THAT(identifiers(), ElementsAre("trovel_linux_tests.desktop"));
    other_.setText(window, "WM_CLIENT_MACHINE", "elsewhere.example");
    EXPECT_THAT(identifiers(), ElementsAre("none"));
}

TEST_F(WorkspaceLinuxTest, WithoutAWindowManagerTheMappedWindowsCount) {
    auto const one = other_.open({.className = "Alpha"});
    auto const two = other_.open({.className = "Beta"});
    static_cast<void>(other_.open({.className = "Menu", .isOverrideRedirect = true}));
    auto const unmapped = other_.open({.className = "Unmapped"});
    xcb_unmap_window(other_.connection().get(), unmapped);
    other_.sync();
    EXPECT_THAT(identifiers(), ElementsAre("Alpha.desktop", "Beta.desktop"));
    // The keyboard may be in a window inside the application's.
    auto const inside = other_.open({.className = "Inside"});
    xcb_reparent_window(other_.connection().get(), inside, one, 0, 0);
    other_.focus(inside);
    EXPECT_EQ(frontmost(), "Alpha.desktop");
    other_.focus(two);
    EXPECT_EQ(frontmost(), "Beta.desktop");
    other_.focus(XCB_INPUT_FOCUS_NONE);
    EXPECT_EQ(frontmost(), "none");
}

TEST_F(WorkspaceLinuxTest, WhenTheKeyboardFollowsThePointerTheWindowBelowItIsInFront) {
    static_cast<void>(other_.open({.className = "Left", .frame = {0, 0, 100, 100}}));
    static_cast<void>(other_.open({.className = "Right", .frame = {200, 0, 100, 100}}));
    other_.focus(XCB_INPUT_FOCUS_POINTER_ROOT);
    auto const pointAt = [this](std::int16_t x) {
        xcb_warp_pointer(other_.connection().get(), XCB_NONE, other_.connection().root(), 0, 0, 0,
                         0, x, 50);
        other_.sync();
        return frontmost();
    };
    EXPECT_EQ(pointAt(50), "Left.desktop");
    EXPECT_EQ(pointAt(250), "Right.desktop");
    EXPECT_EQ(pointAt(150), "none");
}

TEST_F(WorkspaceLinuxTest, AWindowManagerWithoutListsStillMarksItsClients) {
    auto const frame = other_.open({.className = "Frame", .isOverrideRedirect = true});
    auto const client = other_.open({.className = "Client"});
    xcb_reparent_window(other_.connection().get(), client, frame, 0, 0);
    constexpr std::uint32_t kNormalState = 1;
    other_.setNumbers(client, "WM_STATE", XCB_ATOM_CARDINAL, {kNormalState, 0});
    EXPECT_THAT(identifiers(), ElementsAre("Client.desktop"));
    other_.focus(client);
    EXPECT_EQ(frontmost(), "Client.desktop");
    // A minimised one is still running.
    xcb_unmap_window(other_.connection().get(), frame);
    other_.sync();
    EXPECT_THAT(identifiers(), ElementsAre("Client.desktop"));
}

TEST_F(WorkspaceLinuxTest, WhatADeadWindowManagerLeftBehindIsNotBelieved) {
    WindowManagerTraces manager(other_);
    auto const one = other_.open({.className = "Alpha"});
    auto const two = other_.open({.className = "Beta"});
    manager.list({one}, {one});
    manager.activate(one);
    EXPECT_THAT(identifiers(), ElementsAre("Alpha.desktop"));
    manager.crash();
    other_.focus(two);
    EXPECT_THAT(identifiers(), ElementsAre("Alpha.desktop", "Beta.desktop"));
    EXPECT_EQ(frontmost(), "Beta.desktop");
}

TEST_F(WorkspaceLinuxTest, AnIdentifierFindsExactlyItsApplications) {
    WindowManagerTraces manager(other_);
    manager.list({other_.open({.className = "code"}), other_.open({.className = "code-insiders"})},
                 {});
    EXPECT_THAT(identifiersWith("com.microsoft.VSCode"), ElementsAre("com.microsoft.VSCode"));
    EXPECT_THAT(identifiersWith("com.microsoft.VSCod"), IsEmpty());
    EXPECT_THAT(identifiersWith(""), IsEmpty());
}

TEST_F(WorkspaceLinuxTest, TheSystemsTerminalIsEveryTerminalTheOneUsedLastFirst) {
    WindowManagerTraces manager(other_);
    std::vector<xcb_window_t> windows;
    for (auto const* name : {"XTerm", "Gnome-terminal", "kitty", "Alacritty", "Xfce4-terminal",
                             "konsole", "org.wezfurlong.wezterm", "Editor"}) {
        windows.push_back(other_.open({.className = name}));
    }
    manager.list(windows, windows);
    manager.activate(windows[0]);
    static_cast<void>(frontmost());
    manager.activate(windows[2]);
    static_cast<void>(frontmost());
    manager.activate(windows[7]);
    auto const terminals = identifiersWith("com.apple.Terminal");
    ASSERT_EQ(terminals.size(), 7U);
    EXPECT_EQ(terminals[0], "kitty.desktop");
    EXPECT_EQ(terminals[1], "XTerm.desktop");
    // Only this look-up knows that name.
    EXPECT_EQ(frontmost(), "Editor.desktop");
    EXPECT_THAT(identifiersWith("kitty.desktop"), ElementsAre("kitty.desktop"));
}

TEST_F(WorkspaceLinuxTest, ThePrivacySettingsAreExplained) {
    workspace_.openUrl("x-apple.systempreferences:com.apple.preference.security?"
                       "Privacy_ScreenCapture");
    EXPECT_EQ(explanations_, 1);
    workspace_.openUrl("x-apple.systempreferences:other");
    workspace_.openUrl("");
    EXPECT_EQ(explanations_, 1);
}

TEST_F(WorkspaceLinuxTest, AnAddressIsHandedToXdgOpenAndNothingElseIs) {
    folder_.write("bin/xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" >> \"" +
                                      (folder_.path() / "opened").string() + "\"\n");
    std::filesystem::permissions(folder_.path() / "bin/xdg-open",
                                 std::filesystem::perms::owner_all);
    auto const path = (folder_.path() / "bin").string() + ":/usr/bin:/bin";
    ScopedEnvironment const environment("PATH", path.c_str());
    workspace_.openUrl("file:///etc/passwd");
    workspace_.openUrl("--help");
    workspace_.openUrl("https://trovel.example/a?b='c'&d=$(e);f");
    auto const opened = [this] {
        std::ifstream file(folder_.path() / "opened");
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    std::string const expected = "1\nhttps://trovel.example/a?b='c'&d=$(e);f\n";
    EXPECT_TRUE(OtherProgram::eventually([&] { return opened() == expected; })) << opened();
}

TEST_F(WorkspaceLinuxTest, ALostServerIsAnEmptyDesktop) {
    WindowManagerTraces manager(other_);
    auto const window = other_.open({.className = "Alpha"});
    manager.list({window}, {window});
    manager.activate(window);
    EXPECT_EQ(frontmost(), "Alpha.desktop");
    display_.kill();
    EXPECT_THAT(identifiers(), IsEmpty());
    EXPECT_EQ(frontmost(), "none");
}

} // namespace
} // namespace trovel
