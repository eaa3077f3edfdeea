#include "platform/linux/files/preference_text.h"

#include "platform/linux/files/plain_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace trovel {

namespace {

bool isKey(std::string_view text) {
    auto const isKeyCharacter = [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '_' || character == '-' ||
               character == '.';
    };
    return !text.empty() && std::ranges::all_of(text, isKeyCharacter);
}

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
}

/// Whether this is no character of a text, as in a file that is something else.
bool isForeign(char character) {
    return isControl(character) && character != '\t';
}

std::string quoted(std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    std::string result = "\"";
    for (char const character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
            result += character;
        } else if (character == '\n') {
            result += "\\n";
        } else if (isControl(character)) {
            result += "\\x";
            result += kHexDigits[static_cast<unsigned char>(character) / 16];
            result += kHexDigits[static_cast<unsigned char>(character) % 16];
        } else {
            result += character;
        }
    }
    return result += '"';
}

/// The character that an escape at the front of `rest`, after its backslash, stands for. Takes the
/// escape off.
std::optional<char> takeEscape(std::string_view& rest) {
    if (rest.empty()) return std::nullopt;
    char const kind = rest.front();
    rest.remove_prefix(1);
    if (kind == '"' || kind == '\\') return kind;
    if (kind == 'n') return '\n';
    if (kind != 'x' || rest.size() < 2) return std::nullopt;
    unsigned char code = 0;
    auto const* const end = rest.data() + 2;
    if (std::from_chars(rest.data(), end, code, 16).ptr != end) return std::nullopt;
    rest.remove_prefix(2);
    return static_cast<char>(code);
}

std::optional<std::string> unquoted(std::string_view text) {
    if (!text.starts_with('"')) return std::nullopt;
    text.remove_prefix(1);
    std::string result;
    while (!text.empty()) {
        char const character = text.front();
        text.remove_prefix(1);
        if (character == '"') return text.empty() ? std::optional(result) : std::nullopt;
        if (character == '\\') {
            auto const escaped = takeEscape(text);
            if (!escaped) return std::nullopt;
            result += *escaped;
        } else {
            result += character;
        }
    }
    return std::nullopt;
}

std::optional<std::int64_t> integer(std::string_view text) {
    std::int64_t result = 0;
    auto const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, result);
    if (stop != end || error == std::errc::invalid_argument) return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int64_t>;
        return text.starts_with('-') ? Limits::min() : Limits::max();
    }
    return result;
}

std::string_view valueText(std::string_view line) {
    return trimmed(line.substr(line.find('=') + 1));
}

} // namespace

PreferenceText::PreferenceText(std::string_view text) {
    while (!text.empty()) {
        auto const end = text.find('\n');
        auto const line = text.substr(0, end);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        auto const content = trimmed(line);
        if (end != std::string_view::npos && (content.empty() || content.starts_with('#'))) {
            lines_.push_back({{}, std::string(line)});
            continue;
        }
        auto const key = trimmed(content.substr(0, content.find('=')));
        auto const value = valueText(content);
        // A line without an end was cut off: even where it reads well, its value may be a part.
        bool const isWhole = end != std::string_view::npos && key.size() < content.size() &&
                             std::ranges::none_of(content, isForeign);
        if (isWhole && isKey(key) && (!value.starts_with('"') || unquoted(value))) {
            lines_.push_back({std::string(key), std::string(line)});
        } else {
            wasBroken_ = true;
        }
    }
}

PreferenceText::Line const* PreferenceText::find(std::string_view key) const {
    auto const found = std::find_if(lines_.rbegin(), lines_.rend(),
                                    [key](Line const& line) { return line.key == key; });
    return found == lines_.rend() ? nullptr : &*found;
}

std::optional<StoredPreference> PreferenceText::value(std::string_view key) const {
    auto const* const line = find(key);
    if (!line) return std::nullopt;
    auto const text = valueText(line->text);
    if (text == "true") return true;
    if (text == "false") return false;
    if (auto const number = integer(text)) return *number;
    if (auto string = unquoted(text)) return *string;
    return std::nullopt;
}

void PreferenceText::set(std::string_view key, StoredPreference const& value) {
    std::string text = std::string(key) + '=';
    if (auto const* const boolean = std::get_if<bool>(&value)) text += *boolean ? "true" : "false";
    if (auto const* const number = std::get_if<std::int64_t>(&value))
        text += std::to_string(*number);
    if (auto const* const string = std::get_if<std::string>(&value)) text += quoted(*string);
    if (auto const* const line = find(key)) {
        lines_[static_cast<std::size_t>(line - lines_.data())].text = std::move(text);
    } else {
        lines_.push_back({std::string(key), std::move(text)});
    }
}

std::string PreferenceText::text() const {
    std::string result;
    for (auto const& line : lines_) result += line.text + '\n';
    return result;
}

} // namespace trovel
