#include "platform/linux/x11/keymap.h"

#include "tests/linux/support/other_program.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <set>

namespace trovel {
namespace {

TEST(KeyPositions, AreThoseOfTheKernelsKeys) {
    std::pair<KeyCode, xcb_keycode_t> const expected[] = {
        {0, 38},    {6, 52},    {kKeyV, 55},      {18, 10},        {19, 11},   {22, 15},
        {23, 14},   {29, 19},   {kKeyReturn, 36}, {kKeyEscape, 9}, {48, 23},   {49, 65},
        {50, 49},   {10, 94},   {51, 22},         {122, 67},       {120, 68},  {99, 69},
        {109, 76},  {103, 95},  {111, 96},        {82, 90},        {89, 79},   {76, 104},
        {126, 111}, {125, 116}, {123, 113},       {124, 114},      {115, 110}, {119, 115},
        {116, 112}, {121, 117}, {117, 119},       {114, 118},      {55, 37},   {59, 133},
        {58, 64},   {56, 50},   {105, 107}};
    for (auto const& [virtualKey, keycode] : expected) {
        EXPECT_EQ(Keymap::keycodeForVirtualKey(virtualKey), keycode) << virtualKey;
        EXPECT_EQ(Keymap::virtualKeyForKeycode(keycode), virtualKey) << int{keycode};
    }
}

TEST(KeyPositions, GoBothWaysAndNeverMeanAnyKey) {
    std::set<xcb_keycode_t> seen;
    for (KeyCode virtualKey = 0; virtualKey < 1000; ++virtualKey) {
        auto const keycode = Keymap::keycodeForVirtualKey(virtualKey);
        if (!keycode) continue;
        EXPECT_GE(*keycode, 8);
        EXPECT_TRUE(seen.insert(*keycode).second) << virtualKey;
        EXPECT_EQ(Keymap::virtualKeyForKeycode(*keycode), virtualKey);
    }
    EXPECT_GT(seen.size(), 100u);
    for (KeyCode const unknown : {52u, 63u, 128u, 0x10009u, 0xffffffffu}) {
        EXPECT_EQ(Keymap::keycodeForVirtualKey(unknown), std::nullopt) << unknown;
    }
    for (auto const unknown : std::to_array<xcb_keycode_t>({0, 7, 8, 255})) {
        EXPECT_EQ(Keymap::virtualKeyForKeycode(unknown), std::nullopt) << int{unknown};
    }
}

class KeymapTest : public testing::Test {
protected:
    using Keys = std::vector<xcb_keycode_t>;

    TestDisplay display_;
    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    Keymap keymap_{*connection_};
};

TEST_F(KeymapTest, TheLayoutDecidesWhichKeyTypesALetter) {
    std::pair<char const*, Keys> const expected[] = {
        {"us", {55}}, {"de", {55}}, {"fr", {55}}, {"dvorak", {60}}, {"ru", {}}};
    for (auto const& [layout, keys] : expected) {
        ASSERT_TRUE(run({"setxkbmap", layout}));
        EXPECT_EQ(keymap_.keycodesTyping(XKB_KEY_v), keys) << layout;
        EXPECT_EQ(keymap_.keycodesTyping(XKB_KEY_Insert), Keys{118}) << layout;
    }
}

TEST_F(KeymapTest, TheCurrentGroupComesFirst) {
    ASSERT_TRUE(run({"setxkbmap", "us,dvorak,ru"}));
    OtherProgram other;
    auto const useGroup = [&](std::uint8_t group) {
        other.useLayoutGroup(group);
        return keymap_.keycodesTyping(XKB_KEY_v);
    };
    EXPECT_EQ(useGroup(0), (Keys{55, 60}));
    EXPECT_EQ(useGroup(1), (Keys{60, 55}));
    EXPECT_EQ(useGroup(2), (Keys{55, 60}));
}

TEST_F(KeymapTest, OnlyAKeyByItselfTypesALetter) {
    EXPECT_EQ(keymap_.keycodesTyping(XKB_KEY_V), Keys{});
    EXPECT_EQ(keymap_.keycodesTyping(XKB_KEY_NoSymbol), Keys{});
}

TEST_F(KeymapTest, ModifierKeysFollowTheKeymap) {
    auto const has = [this](xcb_keycode_t key) {
        auto const keys = keymap_.modifierKeys();
        return std::ranges::count(keys, key) == 1;
    };
    for (auto const key : std::to_array<xcb_keycode_t>({50, 62, 37, 105, 64, 133, 66, 77}))
        EXPECT_TRUE(has(key)) << int{key};
    EXPECT_FALSE(has(55));
    EXPECT_FALSE(has(0));
}

TEST_F(KeymapTest, ALostServerHasNoKeys) {
    display_.kill();
    EXPECT_EQ(keymap_.keycodesTyping(XKB_KEY_v), Keys{});
    EXPECT_EQ(keymap_.heldKeys(), Keys{});
    EXPECT_EQ(keymap_.modifierKeys(), Keys{});
}

} // namespace
} // namespace trovel
