#include "platform/linux/x11/hotkey_service_x11.h"

#include "platform/carbon_modifiers.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/keymap.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/x11/overlay/frozen_desktop.h"

#include <xcb/xtest.h>

#include <gtest/gtest.h>

namespace trovel {
namespace {

constexpr xcb_keycode_t kControl = 37;
constexpr xcb_keycode_t kShift = 50;
constexpr xcb_keycode_t kAlt = 64;
constexpr xcb_keycode_t kSuper = 133;
constexpr xcb_keycode_t kCapsLock = 66;
constexpr xcb_keycode_t kNumLock = 77;
constexpr xcb_keycode_t kScrollLock = 78;
constexpr xcb_keycode_t kTwo = 11;

constexpr KeyCode kKeyTwo = 19;
constexpr EventHotKeyId kId{1, 1};

class HotkeyServiceX11Test : public testing::Test {
protected:
    HotkeyServiceX11Test() {
        desktop_.hotkeys.installEventHandler(
            [](void* count) -> std::int32_t {
                ++*static_cast<int*>(count);
                return kNoErr;
            },
            &presses_);
    }

    void down(xcb_keycode_t key) { user(XCB_KEY_PRESS, key); }
    void up(xcb_keycode_t key) { user(XCB_KEY_RELEASE, key); }
    void tap(xcb_keycode_t key) {
        down(key);
        up(key);
    }
    void user(std::uint8_t type, xcb_keycode_t key) {
        xcb_test_fake_input(other_.connection().get(), type, key, 0, XCB_NONE, 0, 0, 0);
        other_.sync();
        desktop_.settle();
    }
    void pressHotkey() {
        down(kControl);
        down(kShift);
        tap(kTwo);
        up(kShift);
        up(kControl);
    }

    std::optional<EventHotKeyRef> registerTwo() {
        return desktop_.hotkeys.registerEventHotKey(kKeyTwo, kCmdKey + kShiftKey, kId);
    }

    TestDisplay display_;
    OtherProgram other_;
    FrozenDesktop desktop_;
    int presses_ = 0;
};

TEST_F(HotkeyServiceX11Test, APressIsOneCall) {
    ASSERT_TRUE(registerTwo());
    pressHotkey();
    EXPECT_EQ(presses_, 1);
    pressHotkey();
    EXPECT_EQ(presses_, 2);
}

TEST_F(HotkeyServiceX11Test, LocksDoNotSilenceIt) {
    ASSERT_TRUE(registerTwo());
    int expected = 0;
    for (auto const lock : {kNumLock, kCapsLock, kScrollLock, kNumLock, kCapsLock, kScrollLock}) {
        tap(lock);
        pressHotkey();
        EXPECT_EQ(presses_, ++expected) << "after lock key " << int{lock};
    }
}

TEST_F(HotkeyServiceX11Test, OtherModifiersAreAnotherCombination) {
    ASSERT_TRUE(registerTwo());
    tap(kTwo);
    down(kAlt);
    pressHotkey();
    up(kAlt);
    down(kSuper);
    pressHotkey();
    up(kSuper);
    down(kControl);
    tap(kTwo);
    up(kControl);
    EXPECT_EQ(presses_, 0);
}

TEST_F(HotkeyServiceX11Test, CommandIsCtrlControlIsSuperAndOptionIsAlt) {
    ASSERT_TRUE(desktop_.hotkeys.registerEventHotKey(kKeyTwo, kControlKey + kOptionKey, kId));
    down(kSuper);
    down(kAlt);
    tap(kTwo);
    up(kAlt);
    up(kSuper);
    EXPECT_EQ(presses_, 1);
}

TEST_F(HotkeyServiceX11Test, AHeldKeyIsOnePress) {
    ASSERT_TRUE(registerTwo());
    ASSERT_TRUE(run({"xset", "r", "rate", "200", "50"}));
    down(kControl);
    down(kShift);
    down(kTwo);
    int repeats = 0;
    auto const counting = desktop_.x->addEventHandler([&](xcb_generic_event_t const& event) {
        if (eventType(event) == XCB_KEY_PRESS) ++repeats;
    });
    ASSERT_TRUE(desktop_.turnsUntil([&] { return repeats >= 5; }));
    EXPECT_EQ(presses_, 1);
    up(kTwo);
    tap(kTwo);
    EXPECT_EQ(presses_, 2);
    up(kShift);
    up(kControl);
}

TEST_F(HotkeyServiceX11Test, ARefusedGrabLeavesNothingGrabbed) {
    // Somebody has just one of the variants: that with NumLock on.
    auto const numLock = readModifierMap(other_.connection()).numLock;
    ASSERT_NE(numLock, 0);
    auto* const c = other_.connection().get();
    xcb_grab_key(c, 0, other_.connection().root(),
                 static_cast<std::uint16_t>(XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT | numLock),
                 kTwo, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    other_.sync();
    EXPECT_FALSE(registerTwo());
    pressHotkey();
    EXPECT_EQ(presses_, 0);
    // All the others are free for anybody.
    FrozenDesktop third;
    xcb_ungrab_key(c, kTwo, other_.connection().root(), XCB_MOD_MASK_ANY);
    other_.sync();
    EXPECT_TRUE(third.hotkeys.registerEventHotKey(kKeyTwo, kCmdKey + kShiftKey, kId));
}

TEST_F(HotkeyServiceX11Test, AnUnknownKeyIsRefused) {
    EXPECT_FALSE(desktop_.hotkeys.registerEventHotKey(66, kCmdKey, kId));
    EXPECT_FALSE(desktop_.hotkeys.registerEventHotKey(0xffffffff, kCmdKey, kId));
}

TEST_F(HotkeyServiceX11Test, AnEndedRegistrationIsSilentAndFree) {
    auto const hotKey = registerTwo();
    ASSERT_TRUE(hotKey);
    desktop_.hotkeys.unregisterEventHotKey(*hotKey);
    pressHotkey();
    EXPECT_EQ(presses_, 0);
    FrozenDesktop other;
    EXPECT_TRUE(other.hotkeys.registerEventHotKey(kKeyTwo, kCmdKey + kShiftKey, kId));
}

TEST_F(HotkeyServiceX11Test, TheNewestHandlerComesFirstAndOthersWhenItDeclines) {
    ASSERT_TRUE(registerTwo());
    int declined = 0;
    auto const newest = desktop_.hotkeys.installEventHandler(
        [](void* count) -> std::int32_t {
            ++*static_cast<int*>(count);
            return kEventNotHandledErr;
        },
        &declined);
    ASSERT_TRUE(newest);
    pressHotkey();
    EXPECT_EQ(declined, 1);
    EXPECT_EQ(presses_, 1);
    desktop_.hotkeys.removeEventHandler(*newest);
    pressHotkey();
    EXPECT_EQ(declined, 1);
    EXPECT_EQ(presses_, 2);
}

TEST_F(HotkeyServiceX11Test, FollowsAModifierThatMovesToAnotherBit) {
    ASSERT_TRUE(registerTwo());
    auto const before = desktop_.hotkeys.modifierMap().numLock;
    // NumLock changes places with Alt Gr's modifier.
    ASSERT_TRUE(run({"xmodmap", "-e", "clear mod2", "-e", "clear mod5", "-e", "clear mod3", "-e",
                     "add mod3 = Num_Lock"}));
    ASSERT_TRUE(desktop_.turnsUntil([&] {
        return desktop_.hotkeys.modifierMap().numLock == XCB_MOD_MASK_3;
    })) << "was "
        << before;
    tap(kNumLock);
    pressHotkey();
    EXPECT_EQ(presses_, 1);
}

TEST_F(HotkeyServiceX11Test, StillWorksAfterALayoutChange) {
    ASSERT_TRUE(registerTwo());
    ASSERT_TRUE(run({"setxkbmap", "fr"}));
    desktop_.settle();
    pressHotkey();
    EXPECT_EQ(presses_, 1);
}

TEST(ModifierMapTest, NamesEveryCombinationOfLocksOnce) {
    ModifierMap map;
    map.numLock = XCB_MOD_MASK_2;
    map.scrollLock = XCB_MOD_MASK_5;
    auto combinations = map.lockCombinations();
    EXPECT_EQ(combinations.size(), 8U);
    EXPECT_EQ(combinations.front(), 0);
    std::ranges::sort(combinations);
    EXPECT_EQ(std::ranges::unique(combinations).size(), 0U);
    map.scrollLock = XCB_MOD_MASK_2; // one bit for both
    EXPECT_EQ(map.lockCombinations().size(), 4U);
}

} // namespace
} // namespace trovel
