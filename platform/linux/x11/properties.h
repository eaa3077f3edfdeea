#pragma once

#include "platform/linux/x11/connection.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace trovel {

/// What a window says under a name; null when the window is gone.
using Property = XcbPointer<xcb_get_property_reply_t>;

/// Asks for at most that many words of four bytes, of whatever type. The answer must be taken, by
/// `propertyFrom`, also where nobody wants it any more.
[[nodiscard]] xcb_get_property_cookie_t requestProperty(XcbConnection& x, xcb_window_t window,
                                                        std::string_view name,
                                                        std::uint32_t mostWords);
[[nodiscard]] Property propertyFrom(XcbConnection const& x, xcb_get_property_cookie_t cookie);

/// Both at once, for a single property.
[[nodiscard]] Property readProperty(XcbConnection& x, xcb_window_t window, std::string_view name,
                                    std::uint32_t mostWords);

/// The value of a property of bytes; empty for any other. Valid as long as the property.
[[nodiscard]] std::string_view bytesOf(Property const& property);

/// The value of a property of windows, atoms or numbers; empty for any other.
[[nodiscard]] std::vector<std::uint32_t> wordsOf(Property const& property);

/// The first of them; 0 when there is none.
[[nodiscard]] std::uint32_t wordOf(Property const& property);

/// The window that owns the selection of that name; XCB_WINDOW_NONE when there is none.
[[nodiscard]] xcb_window_t selectionOwner(XcbConnection& x, std::string_view name);

} // namespace trovel
