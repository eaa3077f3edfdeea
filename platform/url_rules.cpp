#include "platform/url_rules.h"

#include <algorithm>

namespace trovel {

namespace {

constexpr std::string_view kPrivacySettings =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";

bool isUrlCharacter(char character) {
    constexpr std::string_view kMarks = "-._~:/?#[]@!$&'()*+,;=%";
    bool const isLetter =
        (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    bool const isDigit = character >= '0' && character <= '9';
    return isLetter || isDigit || kMarks.contains(character);
}

/// Whether a scheme, in letters of either case, is the one of that name in small letters.
bool isScheme(std::string_view scheme, std::string_view name) {
    return std::ranges::equal(
        scheme, name, [](char character, char letter) { return (character | 0x20) == letter; });
}

bool isWebAddress(std::string_view afterScheme) {
    if (!afterScheme.starts_with("//")) return false;
    auto const authority = afterScheme.substr(2, afterScheme.find_first_of("/?#", 2) - 2);
    auto const host = authority.substr(authority.rfind('@') + 1);
    return !host.empty() && !host.starts_with(':');
}

bool isMailAddress(std::string_view afterScheme) {
    auto const address = afterScheme.substr(0, afterScheme.find('?'));
    auto const at = address.find('@');
    return at != std::string_view::npos && at > 0 && at + 1 < address.size();
}

} // namespace

UrlKind kindOfUrl(std::string_view url) {
    if (url == kPrivacySettings) return UrlKind::privacySettings;
    auto const colon = url.find(':');
    if (colon == std::string_view::npos || !std::ranges::all_of(url, isUrlCharacter)) {
        return UrlKind::invalid;
    }
    auto const scheme = url.substr(0, colon);
    auto const rest = url.substr(colon + 1);
    bool const isWeb =
        (isScheme(scheme, "http") || isScheme(scheme, "https")) && isWebAddress(rest);
    bool const isMail = isScheme(scheme, "mailto") && isMailAddress(rest);
    return isWeb || isMail ? UrlKind::handler : UrlKind::invalid;
}

} // namespace trovel
