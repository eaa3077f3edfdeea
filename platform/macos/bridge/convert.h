#pragma once

#include "platform/geometry.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// `text` as a native string; bytes that are no UTF-8 give the empty string.
[[nodiscard]] NSString* _Nonnull toNSString(std::string_view text);

/// A native string in UTF-8; nil gives the empty string.
[[nodiscard]] std::string fromNSString(NSString* _Nullable text);

/// A native value in UTF-8; nothing when it is nil or no string.
[[nodiscard]] std::optional<std::string> optionalText(id _Nullable value);

[[nodiscard]] inline NSPoint toNSPoint(Point point) {
    return NSMakePoint(point.x, point.y);
}
[[nodiscard]] inline NSSize toNSSize(Size size) {
    return NSMakeSize(size.width, size.height);
}
[[nodiscard]] inline NSRect toNSRect(Rect const& rect) {
    return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}
[[nodiscard]] inline Point fromNSPoint(NSPoint point) {
    return {point.x, point.y};
}
[[nodiscard]] inline Size fromNSSize(NSSize size) {
    return {size.width, size.height};
}
[[nodiscard]] inline Rect fromNSRect(NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

} // namespace trovel
