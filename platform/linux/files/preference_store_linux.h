#pragma once

#include "platform/linux/files/preference_text.h"
#include "platform/preference_store.h"

#include <filesystem>
#include <map>

namespace trovel {

/// Where this user's preferences are, as the XDG base directories say.
[[nodiscard]] std::filesystem::path preferencesPath();

/// The preferences in a file of their own, read whenever a value is asked for and replaced as a
/// whole when one changes, so that a crash or a full disk leaves the old file or the new one. A
/// change that cannot be written is kept in memory and goes out with the next one that can.
///
/// A file with lines that nobody understands is set aside under a name that was free, and goes on
/// with its good lines. What cannot be read at all is left alone.
class PreferenceStoreLinux final : public PreferenceStore {
public:
    explicit PreferenceStoreLinux(std::filesystem::path path = preferencesPath());
    ~PreferenceStoreLinux();

    bool boolForKey(std::string_view key) const override;
    std::int64_t integerForKey(std::string_view key) const override;
    std::optional<std::string> stringForKey(std::string_view key) const override;

    void setBool(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setString(std::string_view key, std::string_view value) override;

private:
    [[nodiscard]] std::optional<PreferenceText> read() const;
    [[nodiscard]] std::optional<StoredPreference> value(std::string_view key) const;
    void set(std::string_view key, StoredPreference value);

    std::filesystem::path path_;
    std::map<std::string, StoredPreference, std::less<>> unwritten_;
};

} // namespace trovel
