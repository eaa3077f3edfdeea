#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// The user's defaults database. A write is visible to the next read. Main thread only.
class PreferenceStore {
public:
    PreferenceStore(PreferenceStore const&) = delete;
    PreferenceStore& operator=(PreferenceStore const&) = delete;

    /// False when the key is absent or holds something that is no Boolean.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) const = 0;

    /// 0 when the key is absent or holds something that is no integer.
    [[nodiscard]] virtual std::int64_t integerForKey(std::string_view key) const = 0;

    /// Empty when the key is absent or holds something that is no string.
    [[nodiscard]] virtual std::optional<std::string> stringForKey(std::string_view key) const = 0;

    virtual void setBool(std::string_view key, bool value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setString(std::string_view key, std::string_view value) = 0;

protected:
    PreferenceStore() = default;
    ~PreferenceStore() = default;
};

} // namespace trovel
