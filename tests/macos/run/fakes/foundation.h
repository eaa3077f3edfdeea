#pragma once

#include "tests/macos/run/fakes/clock.h"

#import <Foundation/Foundation.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What the fakes have beyond the interfaces that the sources use.

@interface NSObject (Fakes)
- (BOOL)isEqual:(nullable id)object;
- (BOOL)respondsToSelector:(nullable SEL)selector;
- (nonnull NSString*)description;
- (nonnull id)copy;
- (nonnull id)copyWithZone:(nullable NSZone*)zone;
@end

@interface NSString (Fakes)
- (BOOL)isEqualToString:(nullable NSString*)other;
@end

@interface NSArray (Fakes)
- (NSUInteger)count;
- (nullable id)objectAtIndex:(NSUInteger)index;
@end

@interface NSNumber (Fakes)
+ (nonnull NSNumber*)numberWithLongLong:(long long)value;
+ (nonnull NSNumber*)numberWithDouble:(double)value;
- (double)doubleValue;
@end

@interface NSError (Fakes)
+ (nonnull NSError*)errorWithText:(std::string_view)text;
@end

@interface NSTimer () {
@public
    void (^block_)(NSTimer* _Nonnull);
    fakes::Time interval_;
    fakes::Time due_;
    unsigned long order_;
    BOOL repeats_;
    BOOL isValid_;
}
@end

namespace fakes {

[[nodiscard]] NSString* _Nonnull toNative(std::string_view text);
/// The empty string for nil.
[[nodiscard]] std::string toText(NSString* _Nullable text);

/// What AppKit and Foundation would raise an exception for.
void require(bool isSo, char const* _Nonnull what);

/// Calls a method of one argument by its selector.
void send(id _Nullable receiver, SEL _Nonnull action, id _Nullable argument);

/// Everything in an array, kept.
template <class T> [[nodiscard]] std::vector<T*> allOf(NSArray<T*>* _Nullable list) {
    std::vector<T*> all;
    for (NSUInteger index = 0; index < list.count; ++index) {
        all.push_back(static_cast<T*>([list objectAtIndex:index]));
    }
    return all;
}

} // namespace fakes
