#include "tests/macos/run/fakes/mac.h"

#include <cstring>

NSErrorDomain const NSPOSIXErrorDomain = @"NSPOSIXErrorDomain";

@implementation NSValue
@end

@implementation NSNumber {
    long long integer_;
    double real_;
}

+ (NSNumber*)numberWithLongLong:(long long)value {
    NSNumber* const number = [[NSNumber alloc] init];
    number->integer_ = value;
    number->real_ = static_cast<double>(value);
    return number;
}

+ (NSNumber*)numberWithBool:(BOOL)value {
    return [self numberWithLongLong:value ? 1 : 0];
}

+ (NSNumber*)numberWithInt:(int)value {
    return [self numberWithLongLong:value];
}

+ (NSNumber*)numberWithDouble:(double)value {
    NSNumber* const number = [[NSNumber alloc] init];
    number->integer_ = static_cast<long long>(value);
    number->real_ = value;
    return number;
}

- (long long)longLongValue {
    return integer_;
}

- (double)doubleValue {
    return real_;
}

- (NSString*)description {
    if (static_cast<double>(integer_) != real_) return fakes::toNative(std::to_string(real_));
    return fakes::toNative(std::to_string(integer_));
}

@end

@implementation NSError {
    NSString* text_;
}

+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(NSDictionary*)userInfo {
    fakes::require([domain isEqualToString:NSPOSIXErrorDomain], "an error of another domain");
    return static_cast<id>([NSError errorWithText:std::strerror(static_cast<int>(code))]);
}

+ (NSError*)errorWithText:(std::string_view)text {
    NSError* const error = [[NSError alloc] init];
    error->text_ = fakes::toNative(text);
    return error;
}

- (NSString*)localizedDescription {
    return text_;
}

@end

@implementation NSNotification
@end

@implementation NSNotificationCenter

+ (NSNotificationCenter*)defaultCenter {
    return [[NSNotificationCenter alloc] init];
}

// The center refers to observers weakly (since macOS 10.11), and so do they need no removal.
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(NSNotificationName)name
             object:(id)object {
    fakes::mac().observers.push_back({observer, selector, fakes::toText(name)});
}

@end
