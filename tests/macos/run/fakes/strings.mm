#include "tests/macos/run/fakes/foundation.h"

#include <cstring>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

namespace {

/// Whether the bytes are well-formed UTF-8 (RFC 3629).
bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        auto const first = static_cast<unsigned char>(bytes.front());
        std::size_t const length = first < 0x80   ? 1
                                   : first < 0xc2 ? 0
                                   : first < 0xe0 ? 2
                                   : first < 0xf0 ? 3
                                   : first < 0xf5 ? 4
                                                  : 0;
        if (length == 0 || length > bytes.size()) return false;
        for (auto const byte : bytes.substr(1, length - 1)) {
            if ((static_cast<unsigned char>(byte) & 0xc0U) != 0x80) return false;
        }
        auto const second = length > 1 ? static_cast<unsigned char>(bytes[1]) : 0;
        if ((first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ||
            (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f)) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

} // namespace

@interface NSString () {
@public
    std::string text_;
}
@end

@implementation NSString

- (instancetype)init {
    return self;
}

// "Returns nil if the bytes ... cannot be interpreted in that encoding" (NSString).
- (instancetype)initWithBytes:(void const*)bytes
                       length:(NSUInteger)length
                     encoding:(NSStringEncoding)encoding {
    std::string_view const text(static_cast<char const*>(bytes), length);
    if (encoding != NSUTF8StringEncoding || !isUtf8(text)) return nil;
    text_ = text;
    return self;
}

+ (instancetype)stringWithUTF8String:(char const*)text {
    fakes::require(text != nullptr, "stringWithUTF8String: got NULL");
    return [[self alloc] initWithBytes:text length:std::strlen(text) encoding:NSUTF8StringEncoding];
}

- (char const*)UTF8String {
    return text_.c_str();
}

- (BOOL)isEqualToString:(NSString*)other {
    return other != nil && std::strcmp(self.UTF8String, other.UTF8String) == 0;
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:NSString.class] &&
           [self isEqualToString:static_cast<NSString*>(object)];
}

- (NSString*)description {
    return self;
}

@end

/// What the compiler makes of @"...", which has no other variables than these.
@interface NSConstantString : NSString
@end

@implementation NSConstantString

- (char const*)UTF8String {
    struct Literal {
        void* isa;
        char const* text;
        unsigned int length;
    };
    return static_cast<Literal const*>((__bridge void*)self)->text;
}

@end

namespace fakes {

NSString* toNative(std::string_view text) {
    return [[NSString alloc] initWithBytes:text.data()
                                    length:text.size()
                                  encoding:NSUTF8StringEncoding];
}

std::string toText(NSString* text) {
    return text != nil ? text.UTF8String : "";
}

} // namespace fakes
