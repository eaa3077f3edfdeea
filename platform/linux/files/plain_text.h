#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trovel {

/// The longest piece of another program's text that is of any use here.
inline constexpr std::size_t kPlainTextLimit = 256;

/// Text of another program, made harmless: valid UTF-8 of at most `kPlainTextLimit` bytes. Each
/// control character becomes a space, each broken byte U+FFFD, and the double quote and the
/// backslash their harmless likes, so that an activation script can carry it. Spaces at the ends
/// are left out.
[[nodiscard]] std::string plainText(std::string_view bytes);

/// `text` without the blanks and line ends around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// `text` with the letters A to Z in lower case.
[[nodiscard]] std::string asciiLowerCase(std::string_view text);

} // namespace trovel
