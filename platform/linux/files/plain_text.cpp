#include "platform/linux/files/plain_text.h"

#include <algorithm>

namespace trovel {

namespace {

constexpr std::string_view kReplacement = "\xef\xbf\xbd";

bool isContinuation(char character) {
    return (static_cast<unsigned char>(character) & 0xc0) == 0x80;
}

/// The number of bytes of the UTF-8 character at the start of `text`; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    auto const lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return 1;
    std::size_t const length = lead >= 0xc2 && lead < 0xe0   ? 2
                               : lead >= 0xe0 && lead < 0xf0 ? 3
                               : lead >= 0xf0 && lead < 0xf5 ? 4
                                                             : 0;
    if (length == 0 || text.size() < length) return 0;
    if (!std::ranges::all_of(text.substr(1, length - 1), isContinuation)) return 0;
    // Longer forms than needed, surrogates, and what lies beyond U+10FFFF.
    auto const second = static_cast<unsigned char>(text[1]);
    if ((lead == 0xe0 && second < 0xa0) || (lead == 0xed && second >= 0xa0) ||
        (lead == 0xf0 && second < 0x90) || (lead == 0xf4 && second >= 0x90)) {
        return 0;
    }
    return length;
}

/// What stands for a character of one byte.
char harmless(char character) {
    auto const byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7f) return ' ';
    if (character == '"') return '\'';
    if (character == '\\') return '/';
    return character;
}

} // namespace

std::string plainText(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        auto const length = characterLength(bytes);
        auto const piece = length == 0 ? kReplacement : bytes.substr(0, length);
        if (text.size() + piece.size() > kPlainTextLimit) break;
        if (length == 1) {
            text.push_back(harmless(piece[0]));
        } else {
            text.append(piece);
        }
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return std::string(trimmed(text));
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlank = " \t\r\n";
    auto const first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::string asciiLowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                    : character;
    });
    return lower;
}

} // namespace trovel
