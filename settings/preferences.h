#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trovel {

class PreferenceStore;

/// The names of the keys in the defaults database.
inline constexpr std::string_view kAutoSendEnabled = "autoSendEnabled";
inline constexpr std::string_view kHotkeyIsCustom = "hotkeyIsCustom";
inline constexpr std::string_view kHotkeyKeyCode = "hotkeyKeyCode";
inline constexpr std::string_view kHotkeyModifiers = "hotkeyModifiers";
inline constexpr std::string_view kPreferredAIApp = "preferredAIApp";
inline constexpr std::string_view kCustomAppName = "customAppName";
inline constexpr std::string_view kCustomAppBundleID = "customAppBundleID";
inline constexpr std::string_view kHasCompletedOnboarding = "hasCompletedOnboarding";
inline constexpr std::string_view kTerminalModeEnabled = "terminalModeEnabled";
inline constexpr std::string_view kTerminalModeTarget = "terminalModeTarget";

/// The settings by name and type. Nothing is cached: a read sees what the database holds at that
/// moment, and a key that is absent reads as false, 0 or nothing. Main thread only.
class Preferences {
public:
    /// The store must outlive this object and its copies.
    explicit Preferences(PreferenceStore& store) : store_(store) {}

    /// After pasting, submit the message too.
    [[nodiscard]] bool autoSendEnabled() const;
    void setAutoSendEnabled(bool value);

    /// The user has recorded a hotkey; otherwise the two keys below mean nothing. They are stored
    /// values: loadHotkey() and saveHotkey() of settings/hotkey.h are the way to read and write
    /// them.
    [[nodiscard]] bool hotkeyIsCustom() const;
    void setHotkeyIsCustom(bool value);
    [[nodiscard]] std::int64_t hotkeyKeyCode() const;
    void setHotkeyKeyCode(std::int64_t value);
    [[nodiscard]] std::int64_t hotkeyModifiers() const;
    void setHotkeyModifiers(std::int64_t value);

    /// The display name of the chosen target: a catalogue row's, or the custom application's.
    [[nodiscard]] std::optional<std::string> preferredAIApp() const;
    void setPreferredAIApp(std::string_view value);

    [[nodiscard]] std::optional<std::string> customAppName() const;
    void setCustomAppName(std::string_view value);
    [[nodiscard]] std::optional<std::string> customAppBundleID() const;
    void setCustomAppBundleID(std::string_view value);

    [[nodiscard]] bool hasCompletedOnboarding() const;
    void setHasCompletedOnboarding(bool value);

    /// Captures go to a terminal or editor instead of an AI application.
    [[nodiscard]] bool terminalModeEnabled() const;
    void setTerminalModeEnabled(bool value);
    [[nodiscard]] std::int64_t terminalModeTarget() const;
    void setTerminalModeTarget(std::int64_t value);

private:
    PreferenceStore& store_;
};

} // namespace trovel
