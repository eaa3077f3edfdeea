#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace trovel {

/// What one preference holds.
using StoredPreference = std::variant<bool, std::int64_t, std::string>;

/// The text of a preferences file: a line for each preference, `key=value`, where a value is
/// `true` or `false`, a decimal integer or a string in double quotes. In a string a backslash
/// stands before a quote and a backslash, `\n` is a line feed and `\x1b` any other control byte;
/// all other bytes stand for themselves. Empty lines, lines that begin with `#` and values of other
/// forms are allowed; they are kept as they are and hold nothing.
class PreferenceText {
public:
    PreferenceText() = default;

    /// Takes the good lines of `text` and leaves out the others, such as one that was cut off.
    explicit PreferenceText(std::string_view text);

    /// Whether there were lines that had to be left out.
    [[nodiscard]] bool wasBroken() const { return wasBroken_; }

    /// What the last line of that key holds; nothing when there is none. Integers that do not fit
    /// are the nearest one that does.
    [[nodiscard]] std::optional<StoredPreference> value(std::string_view key) const;

    /// Replaces that key's line or adds one. Other lines stay where they are.
    void set(std::string_view key, StoredPreference const& value);

    [[nodiscard]] std::string text() const;

private:
    struct Line {
        std::string key; // empty: a line that only has to be kept
        std::string text;
    };

    [[nodiscard]] Line const* find(std::string_view key) const;

    std::vector<Line> lines_;
    bool wasBroken_ = false;
};

} // namespace trovel
