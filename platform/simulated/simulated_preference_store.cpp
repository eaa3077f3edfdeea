#include "platform/simulated/simulated_preference_store.h"

#include <utility>

namespace trovel {

void SimulatedPreferenceStore::write(std::string_view key, PreferenceValue value) {
    journal_.record(effect::PreferenceWritten{std::string(key), value});
    store(key, std::move(value));
}

void SimulatedPreferenceStore::remove(std::string_view key) {
    if (auto const found = values_.find(key); found != values_.end()) values_.erase(found);
}

std::optional<PreferenceValue> SimulatedPreferenceStore::stored(std::string_view key) const {
    auto const found = values_.find(key);
    return found != values_.end() ? std::optional(found->second) : std::nullopt;
}

bool SimulatedPreferenceStore::boolForKey(std::string_view key) const {
    auto const value = stored(key);
    auto const* truth = value ? std::get_if<bool>(&*value) : nullptr;
    return truth != nullptr && *truth;
}

std::int64_t SimulatedPreferenceStore::integerForKey(std::string_view key) const {
    auto const value = stored(key);
    auto const* integer = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    return integer != nullptr ? *integer : 0;
}

std::optional<std::string> SimulatedPreferenceStore::stringForKey(std::string_view key) const {
    auto const value = stored(key);
    auto const* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

} // namespace trovel
