#include "platform/linux/applications/accessibility_linux.h"

#include "platform/linux/applications/application_groups.h"
#include "platform/linux/x11/window_source_x11.h"
#include "tests/linux/support/other_program.h"

#include <gtest/gtest.h>

#include <memory>

namespace trovel {
namespace {

class AccessibilityLinuxTest : public testing::Test {
protected:
    [[nodiscard]] std::int32_t identifier(std::string_view name) {
        auto const group = groups_.withName(name);
        return group ? group->application.processIdentifier : -1;
    }

    TestDisplay display_;
    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    WindowSourceX11 windows_{*connection_};
    ApplicationGroups groups_{windows_, {}, 0};
    AccessibilityLinux accessibility_{groups_};
    OtherProgram other_;
};

TEST_F(AccessibilityLinuxTest, AWindowsPlaceIsInPixelsOfTheScreen) {
    auto const window = other_.open({.className = "Alpha", .frame = {30, 40, 200, 100}});
    auto const focused = accessibility_.focusedWindow(identifier("Alpha"));
    ASSERT_TRUE(focused);
    EXPECT_EQ(focused->position(), (Point{30, 40}));
    EXPECT_EQ(focused->size(), (Size{200, 100}));
    // It is asked for anew each time, and a frame around the window does not shift it.
    auto const frame = other_.open({.frame = {100, 200, 300, 300}, .isOverrideRedirect = true});
    xcb_reparent_window(other_.connection().get(), window, frame, 5, 25);
    other_.sync();
    EXPECT_EQ(focused->position(), (Point{105, 225}));
}

TEST_F(AccessibilityLinuxTest, AnInvisibleMarginDoesNotCount) {
    auto const window = other_.open({.className = "Alpha", .frame = {30, 40, 200, 100}});
    auto const setMargin = [&](std::vector<std::uint32_t> const& margin) {
        other_.setNumbers(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, margin);
    };
    auto const focused = accessibility_.focusedWindow(identifier("Alpha"));
    ASSERT_TRUE(focused);
    setMargin({1, 2, 4, 8}); // left, right, top, bottom
    EXPECT_EQ(focused->position(), (Point{31, 44}));
    EXPECT_EQ(focused->size(), (Size{197, 88}));
    for (auto const& nonsense :
         std::vector<std::vector<std::uint32_t>>{{1, 2}, {100, 100, 0, 0}, {0, 0, 0xffffffff, 0}}) {
        setMargin(nonsense);
        EXPECT_EQ(focused->position(), (Point{30, 40}));
        EXPECT_EQ(focused->size(), (Size{200, 100}));
    }
}

TEST_F(AccessibilityLinuxTest, TheMostRecentlyActiveWindowIsTheFocusedOneAndTheFirst) {
    WindowManagerTraces manager(other_);
    auto const one = other_.open({.className = "Alpha", .frame = {1, 1, 10, 10}});
    auto const two = other_.open({.className = "Alpha", .frame = {2, 2, 10, 10}});
    auto const other = other_.open({.className = "Beta", .frame = {3, 3, 10, 10}});
    manager.list({one, two, other}, {one, two, other});
    manager.activate(one);
    auto const alpha = identifier("Alpha");
    manager.activate(other);
    ASSERT_TRUE(accessibility_.focusedWindow(alpha));
    EXPECT_EQ(accessibility_.focusedWindow(alpha)->position(), (Point{1, 1}));
    auto const windows = accessibility_.windows(alpha);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2u);
    EXPECT_EQ((*windows)[0]->position(), (Point{1, 1}));
    EXPECT_EQ((*windows)[1]->position(), (Point{2, 2}));
}

TEST_F(AccessibilityLinuxTest, WhatIsGoneHasNothing) {
    auto const window = other_.open({.className = "Alpha"});
    auto const alpha = identifier("Alpha");
    auto const focused = accessibility_.focusedWindow(alpha);
    ASSERT_TRUE(focused);
    other_.close(window);
    EXPECT_EQ(focused->position(), std::nullopt);
    EXPECT_EQ(focused->size(), std::nullopt);
    EXPECT_FALSE(accessibility_.focusedWindow(alpha));
    EXPECT_FALSE(accessibility_.windows(alpha));
    EXPECT_FALSE(accessibility_.focusedWindow(-1));
}

} // namespace
} // namespace trovel
