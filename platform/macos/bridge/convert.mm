#include "platform/macos/bridge/convert.h"

namespace trovel {

NSString* _Nonnull toNSString(std::string_view text) {
    // A string_view has no terminator, so its length goes along.
    NSString* const native = [[NSString alloc] initWithBytes:text.data()
                                                      length:text.size()
                                                    encoding:NSUTF8StringEncoding];
    return native != nil ? native : @"";
}

std::string fromNSString(NSString* _Nullable text) {
    char const* const utf8 = text.UTF8String;
    return utf8 != nullptr ? utf8 : "";
}

std::optional<std::string> optionalText(id _Nullable value) {
    if (![value isKindOfClass:NSString.class]) return std::nullopt;
    return fromNSString(static_cast<NSString*>(value));
}

} // namespace trovel
