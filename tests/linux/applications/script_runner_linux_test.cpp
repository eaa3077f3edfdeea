#include "platform/linux/applications/script_runner_linux.h"

#include "platform/activation_script.h"
#include "platform/linux/applications/application_groups.h"
#include "platform/linux/x11/window_source_x11.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <memory>

namespace trovel {
namespace {

class ScriptRunnerLinuxTest : public testing::Test {
protected:
    [[nodiscard]] std::optional<std::int32_t> frontmost() {
        auto const application = groups_.read().frontmost;
        if (!application) return std::nullopt;
        return application->processIdentifier;
    }

    static WindowId idOf(xcb_window_t window) { return static_cast<WindowId>(window); }

    [[nodiscard]] bool becomesActive(xcb_window_t window) {
        return OtherProgram::eventually([&] {
            connection_->processEvents();
            return other_.activeWindow() == window;
        });
    }

    /// The messages that ask a window manager to activate a window.
    [[nodiscard]] std::vector<xcb_client_message_event_t> activationMessages() {
        std::vector<xcb_client_message_event_t> messages;
        auto const listening =
            other_.connection().addEventHandler([&](xcb_generic_event_t const& event) {
                if (eventType(event) != XCB_CLIENT_MESSAGE) return;
                messages.push_back(reinterpret_cast<xcb_client_message_event_t const&>(event));
            });
        other_.sync();
        other_.connection().processEvents();
        return messages;
    }

    void listenToTheRoot() {
        std::uint32_t const mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(other_.connection().get(), other_.connection().root(),
                                     XCB_CW_EVENT_MASK, &mask);
        other_.sync();
    }

    TestDisplay display_;
    TemporaryFolder folder_;
    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    WindowSourceX11 windows_{*connection_};
    ApplicationGroups groups_{windows_, {folder_.path()}, 0};
    ScriptRunnerLinux scripts_{groups_};
    OtherProgram other_;
};

TEST_F(ScriptRunnerLinuxTest, BringsTheApplicationsMostRecentWindowToTheFront) {
    Openbox const manager;
    auto const first = other_.open({.className = "Alpha"});
    ASSERT_TRUE(becomesActive(first));
    auto const second = other_.open({.className = "Alpha"});
    ASSERT_TRUE(becomesActive(second));
    other_.focus(first);
    ASSERT_TRUE(becomesActive(first));
    auto const beta = other_.open({.className = "Beta"});
    ASSERT_TRUE(becomesActive(beta));
    // The second window lies above the first, which had the keyboard later.
    scripts_.execute(activationScript("Alpha"));
    EXPECT_TRUE(becomesActive(first));
    EXPECT_EQ(frontmost(), groups_.withName("Alpha")->application.processIdentifier);
    scripts_.execute(activationScript("Beta"));
    EXPECT_TRUE(becomesActive(beta));
}

TEST_F(ScriptRunnerLinuxTest, BringsBackAMinimisedWindow) {
    Openbox const manager;
    auto const alpha = other_.open({.className = "Alpha"});
    ASSERT_TRUE(becomesActive(alpha));
    auto const beta = other_.open({.className = "Beta"});
    ASSERT_TRUE(becomesActive(beta));
    other_.minimise(alpha);
    ASSERT_TRUE(OtherProgram::eventually([&] { return !other_.isViewable(alpha); }));
    scripts_.execute(activationScript("Alpha"));
    EXPECT_TRUE(becomesActive(alpha));
    EXPECT_TRUE(other_.isViewable(alpha));
}

TEST_F(ScriptRunnerLinuxTest, FindsTheOneOfTwoWithOneNameThatWasMeant) {
    folder_.write("applications/a.desktop", "[Desktop Entry]\nType=Application\nName=Notes\n");
    folder_.write("applications/b.desktop", "[Desktop Entry]\nType=Application\nName=Notes\n");
    Openbox const manager;
    auto const a = other_.open({.className = "A"});
    ASSERT_TRUE(becomesActive(a));
    auto const b = other_.open({.className = "B"});
    ASSERT_TRUE(becomesActive(b));
    auto const groups = groups_.read().groups;
    ASSERT_EQ(groups.size(), 2u);
    for (auto const& group : groups) {
        scripts_.execute(activationScript(*group.application.localizedName));
        EXPECT_TRUE(becomesActive(static_cast<xcb_window_t>(group.windows[0])));
    }
}

TEST_F(ScriptRunnerLinuxTest, AsksAsTheUserWouldWithATimeOfTheServer) {
    WindowManagerTraces manager(other_);
    auto const window = other_.open({.className = "Alpha"});
    manager.list({window}, {window});
    listenToTheRoot();
    scripts_.execute(activationScript("Alpha"));
    connection_->flush();
    std::vector<xcb_client_message_event_t> messages;
    ASSERT_TRUE(OtherProgram::eventually([&] {
        messages = activationMessages();
        return !messages.empty();
    }));
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].window, window);
    EXPECT_EQ(messages[0].type, other_.connection().atom("_NET_ACTIVE_WINDOW"));
    EXPECT_EQ(messages[0].data.data32[0], 2u);
    EXPECT_NE(messages[0].data.data32[1], 0u);
}

TEST_F(ScriptRunnerLinuxTest, DoesNothingForOtherTextsAndApplicationsThatAreGone) {
    WindowManagerTraces manager(other_);
    auto const window = other_.open({.className = "Alpha"});
    manager.list({window}, {window});
    listenToTheRoot();
    scripts_.execute("tell application \"Alpha\" to quit");
    scripts_.execute(activationScript("Beta"));
    scripts_.execute(activationScript(""));
    static_cast<void>(groups_.read());
    EXPECT_TRUE(activationMessages().empty());
}

TEST_F(ScriptRunnerLinuxTest, AWindowThatWasActiveLaterCountsMoreThanOneOnTop) {
    WindowManagerTraces manager(other_);
    auto const worked = other_.open({.className = "Alpha"});
    auto const onTop = other_.open({.className = "Alpha"});
    auto const never = other_.open({.className = "Alpha"});
    manager.list({worked, onTop, never}, {worked, never, onTop});
    manager.activate(onTop);
    connection_->processEvents();
    manager.activate(worked);
    connection_->processEvents();
    manager.activate(XCB_WINDOW_NONE);
    EXPECT_EQ(groups_.withName("Alpha")->windows,
              (std::vector{idOf(worked), idOf(onTop), idOf(never)}));
}

TEST_F(ScriptRunnerLinuxTest, TheOrderOnTheScreenDecidesAmongWindowsNobodyUsed) {
    WindowManagerTraces manager(other_);
    auto const below = other_.open({.className = "Alpha"});
    auto const above = other_.open({.className = "Alpha"});
    auto const unlisted = other_.open({.className = "Alpha"});
    manager.list({unlisted, above, below}, {below, above});
    EXPECT_EQ(groups_.withName("Alpha")->windows,
              (std::vector{idOf(above), idOf(below), idOf(unlisted)}));
}

TEST_F(ScriptRunnerLinuxTest, RaisesAndFocusesByItselfWithoutAWindowManager) {
    auto const alpha = other_.open({.className = "Alpha"});
    auto const beta = other_.open({.className = "Beta"});
    other_.focus(beta);
    scripts_.execute(activationScript("Alpha"));
    EXPECT_EQ(frontmost(), groups_.withName("Alpha")->application.processIdentifier);
    auto& connection = other_.connection();
    auto const tree =
        connection.reply<xcb_query_tree_reply>(xcb_query_tree(connection.get(), connection.root()));
    ASSERT_TRUE(tree);
    EXPECT_EQ(xcb_query_tree_children(tree.get())[tree->children_len - 1], alpha);
}

TEST_F(ScriptRunnerLinuxTest, AWindowThatVanishesWhileItIsActivatedIsNoHarm) {
    auto const alpha = other_.open({.className = "Alpha"});
    auto const group = groups_.withName("Alpha");
    ASSERT_TRUE(group);
    other_.close(alpha);
    groups_.activate(*group);
    EXPECT_EQ(frontmost(), std::nullopt);
    EXPECT_FALSE(connection_->isLost());
}

} // namespace
} // namespace trovel
