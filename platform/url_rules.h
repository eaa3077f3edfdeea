#pragma once

#include <cstdint>
#include <string_view>

namespace trovel {

/// What kind of address a text is.
enum class UrlKind : std::uint8_t {
    invalid,
    /// A web page, or a new mail: the user's own program opens it.
    handler,
    /// The pane of macOS's settings for the grant to record the screen, by its exact address.
    privacySettings,
};

/// A web address needs a host and a mail address both its halves. What is in neither alphabet of
/// RFC 3986 makes a text invalid, and so does every other scheme.
[[nodiscard]] UrlKind kindOfUrl(std::string_view url);

} // namespace trovel
