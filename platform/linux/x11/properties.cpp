#include "platform/linux/x11/properties.h"

#include <cstddef>

namespace trovel {

xcb_get_property_cookie_t requestProperty(XcbConnection& x, xcb_window_t window,
                                          std::string_view name, std::uint32_t mostWords) {
    return xcb_get_property(x.get(), 0, window, x.atom(name), XCB_ATOM_ANY, 0, mostWords);
}

Property propertyFrom(XcbConnection const& x, xcb_get_property_cookie_t cookie) {
    return x.reply<xcb_get_property_reply>(cookie);
}

Property readProperty(XcbConnection& x, xcb_window_t window, std::string_view name,
                      std::uint32_t mostWords) {
    return propertyFrom(x, requestProperty(x, window, name, mostWords));
}

std::string_view bytesOf(Property const& property) {
    if (!property || property->format != 8) return {};
    return {static_cast<char const*>(xcb_get_property_value(property.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(property.get()))};
}

std::vector<std::uint32_t> wordsOf(Property const& property) {
    if (!property || property->format != 32) return {};
    auto const* const first =
        static_cast<std::uint32_t const*>(xcb_get_property_value(property.get()));
    return {first, first + property->value_len};
}

std::uint32_t wordOf(Property const& property) {
    auto const words = wordsOf(property);
    return words.empty() ? 0 : words[0];
}

xcb_window_t selectionOwner(XcbConnection& x, std::string_view name) {
    auto const answer =
        x.reply<xcb_get_selection_owner_reply>(xcb_get_selection_owner(x.get(), x.atom(name)));
    return answer ? answer->owner : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace trovel
