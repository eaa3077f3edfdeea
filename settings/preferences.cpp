#include "settings/preferences.h"

#include "platform/preference_store.h"

namespace trovel {

bool Preferences::autoSendEnabled() const {
    return store_.boolForKey(kAutoSendEnabled);
}

void Preferences::setAutoSendEnabled(bool value) {
    store_.setBool(kAutoSendEnabled, value);
}

bool Preferences::hotkeyIsCustom() const {
    return store_.boolForKey(kHotkeyIsCustom);
}

void Preferences::setHotkeyIsCustom(bool value) {
    store_.setBool(kHotkeyIsCustom, value);
}

std::int64_t Preferences::hotkeyKeyCode() const {
    return store_.integerForKey(kHotkeyKeyCode);
}

void Preferences::setHotkeyKeyCode(std::int64_t value) {
    store_.setInteger(kHotkeyKeyCode, value);
}

std::int64_t Preferences::hotkeyModifiers() const {
    return store_.integerForKey(kHotkeyModifiers);
}

void Preferences::setHotkeyModifiers(std::int64_t value) {
    store_.setInteger(kHotkeyModifiers, value);
}

std::optional<std::string> Preferences::preferredAIApp() const {
    return store_.stringForKey(kPreferredAIApp);
}

void Preferences::setPreferredAIApp(std::string_view value) {
    store_.setString(kPreferredAIApp, value);
}

std::optional<std::string> Preferences::customAppName() const {
    return store_.stringForKey(kCustomAppName);
}

void Preferences::setCustomAppName(std::string_view value) {
    store_.setString(kCustomAppName, value);
}

std::optional<std::string> Preferences::customAppBundleID() const {
    return store_.stringForKey(kCustomAppBundleID);
}

void Preferences::setCustomAppBundleID(std::string_view value) {
    store_.setString(kCustomAppBundleID, value);
}

bool Preferences::hasCompletedOnboarding() const {
    return store_.boolForKey(kHasCompletedOnboarding);
}

void Preferences::setHasCompletedOnboarding(bool value) {
    store_.setBool(kHasCompletedOnboarding, value);
}

bool Preferences::terminalModeEnabled() const {
    return store_.boolForKey(kTerminalModeEnabled);
}

void Preferences::setTerminalModeEnabled(bool value) {
    store_.setBool(kTerminalModeEnabled, value);
}

std::int64_t Preferences::terminalModeTarget() const {
    return store_.integerForKey(kTerminalModeTarget);
}

void Preferences::setTerminalModeTarget(std::int64_t value) {
    store_.setInteger(kTerminalModeTarget, value);
}

} // namespace trovel
