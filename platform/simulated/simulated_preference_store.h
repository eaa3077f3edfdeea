#pragma once

#include "platform/preference_store.h"
#include "platform/simulated/journal.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace trovel {

/// The defaults database. Other programs may have put a value of any type under any key.
class SimulatedPreferenceStore final : public PreferenceStore {
public:
    explicit SimulatedPreferenceStore(Journal& journal) : journal_(journal) {}
    ~SimulatedPreferenceStore() = default;

    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const override;
    void setBool(std::string_view key, bool value) override { write(key, value); }
    void setInteger(std::string_view key, std::int64_t value) override { write(key, value); }
    void setString(std::string_view key, std::string_view value) override {
        write(key, std::string(value));
    }

    /// Puts a value there behind the program's back.
    void store(std::string_view key, PreferenceValue value) {
        values_.insert_or_assign(std::string(key), std::move(value));
    }
    void remove(std::string_view key);
    /// What is stored, whatever its type; nothing when the key is absent.
    [[nodiscard]] std::optional<PreferenceValue> stored(std::string_view key) const;

private:
    void write(std::string_view key, PreferenceValue value);

    Journal& journal_;
    std::map<std::string, PreferenceValue, std::less<>> values_;
};

} // namespace trovel
