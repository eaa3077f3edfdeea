#pragma once

#include "platform/preference_store.h"

namespace trovel {

/// The standard user defaults of the bundle's domain. What counts as a Boolean, an integer or a
/// string is the system's reading: it takes the number 1 for true, and a number for its text.
class PreferenceStoreMac final : public PreferenceStore {
public:
    PreferenceStoreMac() = default;

    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const override;

    void setBool(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setString(std::string_view key, std::string_view value) override;
};

} // namespace trovel
