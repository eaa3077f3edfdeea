#include "platform/simulated/simulated_preferences.h"

#include <utility>

namespace trovel {

void SimulatedPreferences::write(std::string_view key, PreferenceValue value) {
    journal_.record(effect::PreferenceWritten{std::string(key), value});
    store(key, std::move(value));
}

void SimulatedPreferences::remove(std::string_view key) {
    if (auto const found = values_.find(key); found != values_.end()) values_.erase(found);
}

std::optional<PreferenceValue> SimulatedPreferences::stored(std::string_view key) const {
    auto const found = values_.find(key);
    return found != values_.end() ? std::optional(found->second) : std::nullopt;
}

bool SimulatedPreferences::boolForKey(std::string_view key) const {
    auto const value = stored(key);
    auto const* truth = value ? std::get_if<bool>(&*value) : nullptr;
    return truth != nullptr && *truth;
}

std::int64_t SimulatedPreferences::integerForKey(std::string_view key) const {
    auto const value = stored(key);
    auto const* integer = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    return integer != nullptr ? *integer : 0;
}

std::optional<std::string> SimulatedPreferences::stringForKey(std::string_view key) const {
    auto const value = stored(key);
    auto const* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

} // namespace trovel
