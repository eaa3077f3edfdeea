#include "settings/hotkey.h"

#include "platform/fatal.h"
#include "settings/preferences.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

namespace trovel {

namespace {

// Command stands before Shift here and after it in a recorded hotkey's text. Both are intended.
constexpr std::string_view kDefaultHotkeyText = "⌘⇧2";

struct NamedKey {
    KeyCode keyCode;
    std::string_view name;
};

constexpr auto kNamedKeys = std::to_array<NamedKey>({
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
});

std::uint32_t storedUnsigned(std::int64_t value, std::string_view key) {
    if (value < 0 || value > std::numeric_limits<std::uint32_t>::max()) {
        fatal(std::string(key).append(" is no unsigned 32-bit number"));
    }
    return static_cast<std::uint32_t>(value);
}

/// The glyphs of a Carbon mask, in the one order that every text uses.
std::string glyphs(std::uint32_t modifiers) {
    std::string result;
    if ((modifiers & kControlKey) != 0) result += "⌃";
    if ((modifiers & kOptionKey) != 0) result += "⌥";
    if ((modifiers & kShiftKey) != 0) result += "⇧";
    if ((modifiers & kCmdKey) != 0) result += "⌘";
    return result;
}

std::string text(Hotkey hotkey) {
    return glyphs(hotkey.modifiers) + keyName(hotkey.keyCode);
}

} // namespace

Hotkey loadHotkey(Preferences const& preferences) {
    if (!preferences.hotkeyIsCustom()) return kDefaultHotkey;
    return {storedUnsigned(preferences.hotkeyKeyCode(), kHotkeyKeyCode),
            storedUnsigned(preferences.hotkeyModifiers(), kHotkeyModifiers)};
}

void saveHotkey(Preferences& preferences, Hotkey hotkey) {
    preferences.setHotkeyKeyCode(hotkey.keyCode);
    preferences.setHotkeyModifiers(hotkey.modifiers);
    preferences.setHotkeyIsCustom(true);
}

std::string storedHotkeyText(Preferences const& preferences) {
    if (!preferences.hotkeyIsCustom()) return std::string(kDefaultHotkeyText);
    return text(loadHotkey(preferences));
}

std::string hotkeyText(KeyCode keyCode, EventFlags flags) {
    return text({keyCode, carbonModifiers(flags)});
}

std::string modifierGlyphs(EventFlags flags) {
    return glyphs(carbonModifiers(flags));
}

std::string keyName(KeyCode keyCode) {
    auto const* const named = std::ranges::find(kNamedKeys, keyCode, &NamedKey::keyCode);
    if (named == kNamedKeys.end()) return "Key" + std::to_string(keyCode);
    return std::string(named->name);
}

} // namespace trovel
