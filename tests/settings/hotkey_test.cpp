#include "settings/hotkey.h"

#include "platform/simulated/simulated_desktop.h"
#include "settings/preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

namespace trovel {
namespace {

using testing::ElementsAre;

class HotkeyTest : public testing::Test {
protected:
    void store(bool isCustom, std::int64_t keyCode, std::int64_t modifiers) {
        desktop.preferences.store(kHotkeyIsCustom, isCustom);
        desktop.preferences.store(kHotkeyKeyCode, keyCode);
        desktop.preferences.store(kHotkeyModifiers, modifiers);
    }
    std::string textOfSaved(Hotkey hotkey) {
        saveHotkey(preferences, hotkey);
        return storedHotkeyText(preferences);
    }

    SimulatedDesktop desktop;
    Preferences preferences{desktop.preferences};
};

TEST_F(HotkeyTest, IsCommandShiftTwoOnAFreshAccount) {
    EXPECT_EQ(loadHotkey(preferences), (Hotkey{19, 768}));
    EXPECT_EQ(storedHotkeyText(preferences), "⌘⇧2");
}

TEST_F(HotkeyTest, StoredValuesCountOnlyWhileTheHotkeyIsCustom) {
    store(false, 10, 4352);
    EXPECT_EQ(loadHotkey(preferences), (Hotkey{19, 768}));
    EXPECT_EQ(storedHotkeyText(preferences), "⌘⇧2");
    store(true, 10, 4352);
    EXPECT_EQ(loadHotkey(preferences), (Hotkey{10, 4352}));
    EXPECT_EQ(storedHotkeyText(preferences), "⌃⌘Key10");
}

TEST_F(HotkeyTest, SavingWritesTheValuesBeforeItSaysThatTheyCount) {
    saveHotkey(preferences, {122, 6144});
    EXPECT_THAT(desktop.journal.all<effect::PreferenceWritten>(),
                ElementsAre(effect::PreferenceWritten{"hotkeyKeyCode", std::int64_t{122}},
                            effect::PreferenceWritten{"hotkeyModifiers", std::int64_t{6144}},
                            effect::PreferenceWritten{"hotkeyIsCustom", true}));
    EXPECT_EQ(loadHotkey(preferences), (Hotkey{122, 6144}));
}

TEST_F(HotkeyTest, TheWholeUnsignedRangeIsKept) {
    saveHotkey(preferences, {4294967295U, 4294967295U});
    EXPECT_EQ(loadHotkey(preferences), (Hotkey{4294967295U, 4294967295U}));
}

TEST_F(HotkeyTest, ACustomValueOutOfRangeStopsTheProcess) {
    for (auto const value : {std::int64_t{-1}, std::int64_t{4294967296}}) {
        store(true, value, 768);
        EXPECT_DEATH(static_cast<void>(loadHotkey(preferences)), "hotkeyKeyCode");
        EXPECT_DEATH(static_cast<void>(storedHotkeyText(preferences)), "hotkeyKeyCode");
        store(true, 19, value);
        EXPECT_DEATH(static_cast<void>(loadHotkey(preferences)), "hotkeyModifiers");
    }
}

TEST_F(HotkeyTest, AValueOutOfRangeIsNoMatterUntilItIsCustom) {
    store(false, -1, 4294967296);
    EXPECT_EQ(loadHotkey(preferences), kDefaultHotkey);
}

TEST_F(HotkeyTest, ACustomHotkeyWithoutValuesIsKeyZeroAlone) {
    desktop.preferences.store(kHotkeyIsCustom, true);
    EXPECT_EQ(loadHotkey(preferences), (Hotkey{0, 0}));
    EXPECT_EQ(storedHotkeyText(preferences), "A");
}

TEST_F(HotkeyTest, ARecordedCommandShiftTwoPutsShiftFirst) {
    EXPECT_EQ(textOfSaved({19, 768}), "⇧⌘2");
}

TEST_F(HotkeyTest, TextPutsControlOptionShiftCommandBeforeTheKey) {
    EXPECT_EQ(textOfSaved({122, 6144}), "⌃⌥F1");
    EXPECT_EQ(textOfSaved({49, 256 + 512 + 2048 + 4096}), "⌃⌥⇧⌘Space");
}

TEST_F(HotkeyTest, TextOfEventFlagsReadsTheSame) {
    EXPECT_EQ(hotkeyText(19, kFlagCommand | kFlagShift), "⇧⌘2");
    EXPECT_EQ(hotkeyText(18, kFlagCommand | kFlagShift | kFlagOption | kFlagControl), "⌃⌥⇧⌘1");
    EXPECT_EQ(hotkeyText(53, kFlagCapsLock | kFlagNumericPad | kFlagHelp | kFlagFunction), "Esc");
}

TEST(CarbonModifiers, AreTheFourModifiersAndNothingElse) {
    EXPECT_EQ(carbonModifiers(0x100000), 256U);
    EXPECT_EQ(carbonModifiers(0x20000), 512U);
    EXPECT_EQ(carbonModifiers(0x80000), 2048U);
    EXPECT_EQ(carbonModifiers(0x40000), 4096U);
    EXPECT_EQ(carbonModifiers(0xffffffff), 6912U);
    EXPECT_EQ(carbonModifiers(0xffffffff & ~0x1e0000U), 0U);
}

TEST(KeyName, IsThatOfAnAnsiKeyboardOrTheCode) {
    std::map<KeyCode, std::string> const names{
        {0, "A"},      {1, "S"},    {2, "D"},       {3, "F"},    {4, "H"},     {5, "G"},
        {6, "Z"},      {7, "X"},    {8, "C"},       {9, "V"},    {11, "B"},    {12, "Q"},
        {13, "W"},     {14, "E"},   {15, "R"},      {16, "Y"},   {17, "T"},    {18, "1"},
        {19, "2"},     {20, "3"},   {21, "4"},      {22, "6"},   {23, "5"},    {24, "="},
        {25, "9"},     {26, "7"},   {27, "-"},      {28, "8"},   {29, "0"},    {30, "]"},
        {31, "O"},     {32, "U"},   {33, "["},      {34, "I"},   {35, "P"},    {36, "Return"},
        {37, "L"},     {38, "J"},   {39, "'"},      {40, "K"},   {41, ";"},    {42, "\\"},
        {43, ","},     {44, "/"},   {45, "N"},      {46, "M"},   {47, "."},    {48, "Tab"},
        {49, "Space"}, {50, "`"},   {51, "Delete"}, {53, "Esc"}, {96, "F5"},   {97, "F6"},
        {98, "F7"},    {99, "F3"},  {100, "F8"},    {101, "F9"}, {103, "F11"}, {109, "F10"},
        {111, "F12"},  {118, "F4"}, {120, "F2"},    {122, "F1"},
    };
    ASSERT_EQ(names.size(), 64U);
    for (KeyCode code = 0; code < 256; ++code) {
        auto const named = names.find(code);
        EXPECT_EQ(keyName(code),
                  named != names.end() ? named->second : "Key" + std::to_string(code));
    }
    EXPECT_EQ(keyName(4294967295U), "Key4294967295");
}

} // namespace
} // namespace trovel
