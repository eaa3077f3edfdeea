#include "platform/carbon_modifiers.h"
#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/hotkey_service_x11.h"
#include "platform/linux/x11/keymap.h"
#include "tests/linux/support/other_program.h"

#include <xcb/xtest.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <memory>
#include <optional>

namespace trovel {
namespace {

constexpr xcb_keycode_t kControl = 37;
constexpr xcb_keycode_t kTwo = 11;
constexpr KeyCode kKeyTwo = 19;
constexpr KeyCode kKeyThree = 20;
constexpr EventHotKeyId kId{1, 1};

class HotkeySuspensionTest : public testing::Test {
protected:
    std::optional<EventHotKeyRef> registerKey(KeyCode key) {
        return hotkeys_->registerEventHotKey(key, kCmdKey, kId);
    }

    /// Whether the combination of Ctrl and that key is taken, as another program finds out.
    bool isTaken(KeyCode key) {
        // The server reads its clients in any order: ours must be through with what it asked for.
        static_cast<void>(
            connection_->reply<xcb_get_input_focus_reply>(xcb_get_input_focus(connection_->get())));
        auto const& x = other_.connection();
        auto const keycode = *Keymap::keycodeForVirtualKey(key);
        bool const isFree =
            x.succeeded(xcb_grab_key_checked(x.get(), 0, x.root(), XCB_MOD_MASK_CONTROL, keycode,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        if (isFree) xcb_ungrab_key(x.get(), keycode, x.root(), XCB_MOD_MASK_CONTROL);
        other_.sync();
        return !isFree;
    }

    void fake(std::uint8_t type, xcb_keycode_t key) {
        xcb_test_fake_input(other_.connection().get(), type, key, 0, XCB_NONE, 0, 0, 0);
        other_.sync();
    }

    TestDisplay display_;
    MainQueueLinux queue_;
    ApplicationLinux application_{queue_};
    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    std::unique_ptr<HotkeyServiceX11> hotkeys_ = std::make_unique<HotkeyServiceX11>(*connection_);
    OtherProgram other_;
};

TEST_F(HotkeySuspensionTest, TheGrabsRestUntilTheLastSuspensionEnds) {
    ASSERT_TRUE(registerKey(kKeyTwo));
    EXPECT_TRUE(isTaken(kKeyTwo));
    auto first = hotkeys_->suspend();
    auto second = hotkeys_->suspend();
    EXPECT_FALSE(isTaken(kKeyTwo));
    first.reset();
    EXPECT_FALSE(isTaken(kKeyTwo));
    second.reset();
    EXPECT_TRUE(isTaken(kKeyTwo));
}

TEST_F(HotkeySuspensionTest, WhatChangesMeanwhileIsRightAfterwards) {
    auto const two = registerKey(kKeyTwo);
    ASSERT_TRUE(two);
    auto suspension = hotkeys_->suspend();
    hotkeys_->unregisterEventHotKey(*two);
    ASSERT_TRUE(registerKey(kKeyThree));
    EXPECT_FALSE(isTaken(kKeyThree));
    suspension.reset();
    EXPECT_FALSE(isTaken(kKeyTwo));
    EXPECT_TRUE(isTaken(kKeyThree));
}

TEST_F(HotkeySuspensionTest, AKeyThatSomebodyElseHasIsRefusedMeanwhileToo) {
    auto const& x = other_.connection();
    ASSERT_TRUE(x.succeeded(xcb_grab_key_checked(x.get(), 0, x.root(), XCB_MOD_MASK_CONTROL, kTwo,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    auto const suspension = hotkeys_->suspend();
    EXPECT_FALSE(registerKey(kKeyTwo));
}

TEST_F(HotkeySuspensionTest, TheGrabsComeBackWhenTheKeyIsUp) {
    ASSERT_TRUE(registerKey(kKeyTwo));
    auto suspension = hotkeys_->suspend();
    fake(XCB_KEY_PRESS, kControl);
    fake(XCB_KEY_PRESS, kTwo);
    suspension.reset();
    EXPECT_FALSE(isTaken(kKeyTwo));
    fake(XCB_KEY_RELEASE, kTwo);
    fake(XCB_KEY_RELEASE, kControl);
    EXPECT_TRUE(OtherProgram::eventually([&] {
        QCoreApplication::processEvents();
        return isTaken(kKeyTwo);
    }));
}

TEST_F(HotkeySuspensionTest, ASuspensionMayOutliveTheService) {
    auto suspension = hotkeys_->suspend();
    hotkeys_.reset();
    suspension.reset();
}

} // namespace
} // namespace trovel
