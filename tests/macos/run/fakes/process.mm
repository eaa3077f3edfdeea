#include "tests/macos/run/fakes/mac.h"

#include <charconv>
#include <cstdlib>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

// What this process is to the system, and what the system keeps for it.

@implementation NSUserDefaults

+ (NSUserDefaults*)standardUserDefaults {
    return [[NSUserDefaults alloc] init];
}

- (id)objectForKey:(NSString*)key {
    auto const found = fakes::mac().defaults.find(fakes::toText(key));
    return found != fakes::mac().defaults.end() ? found->second : nil;
}

- (void)setObject:(id)value forKey:(NSString*)key {
    auto const name = fakes::toText(key);
    fakes::mac().defaults[name] = value;
}

// "If the value is a number, its string value is returned"; anything else is nil.
- (NSString*)stringForKey:(NSString*)key {
    id const value = [self objectForKey:key];
    if ([value isKindOfClass:NSString.class]) return value;
    if ([value isKindOfClass:NSNumber.class]) return static_cast<NSNumber*>(value).description;
    return nil;
}

// "If the value is a string that begins with a number, that number is returned", a real number
// without its fraction; anything else is 0.
- (NSInteger)integerForKey:(NSString*)key {
    id const value = [self objectForKey:key];
    if ([value isKindOfClass:NSNumber.class]) {
        return static_cast<NSInteger>(static_cast<NSNumber*>(value).longLongValue);
    }
    if (![value isKindOfClass:NSString.class]) return 0;
    return std::strtol(static_cast<NSString*>(value).UTF8String, nullptr, 10);
}

// "If the value is a number, YES unless it is 0; if it is a string, YES for "YES", "true" and
// "1"."
- (BOOL)boolForKey:(NSString*)key {
    id const value = [self objectForKey:key];
    if ([value isKindOfClass:NSNumber.class]) {
        return static_cast<NSNumber*>(value).doubleValue != 0;
    }
    if (![value isKindOfClass:NSString.class]) return NO;
    auto const text = fakes::toText(value);
    return text == "YES" || text == "true" || text == "1";
}

- (void)setInteger:(NSInteger)value forKey:(NSString*)key {
    [self setObject:[NSNumber numberWithLongLong:value] forKey:key];
}

- (void)setBool:(BOOL)value forKey:(NSString*)key {
    [self setObject:[NSNumber numberWithBool:value] forKey:key];
}

@end

@implementation NSBundle {
    std::string path_;
}

+ (NSBundle*)mainBundle {
    NSBundle* const bundle = [[NSBundle alloc] init];
    bundle->path_ = "/Applications/Trovel.app";
    return bundle;
}

// Bundles other than the program's own are those that are installed.
+ (instancetype)bundleWithURL:(NSURL*)url {
    auto const path = fakes::toText(url.path);
    for (auto const& [identifier, place] : fakes::mac().installed) {
        if (place != path) continue;
        NSBundle* const bundle = [[NSBundle alloc] init];
        bundle->path_ = path;
        return bundle;
    }
    return nil;
}

- (NSString*)bundlePath {
    return fakes::toNative(path_);
}

- (NSString*)bundleIdentifier {
    for (auto const& [identifier, place] : fakes::mac().installed) {
        if (place == path_) return fakes::toNative(identifier);
    }
    return nil;
}

- (id)objectForInfoDictionaryKey:(NSString*)key {
    auto const& info = fakes::mac().bundleInfo;
    auto const found = info.find(fakes::toText(key));
    return found != info.end() ? found->second : nil;
}

@end

@implementation NSProcessInfo

+ (NSProcessInfo*)processInfo {
    return [[NSProcessInfo alloc] init];
}

- (NSDictionary<NSString*, NSString*>*)environment {
    return @{@"HOME" : fakes::toNative(fakes::mac().home)};
}

- (NSTimeInterval)systemUptime {
    auto const now = fakes::mac().clock.now() + fakes::mac().timeInHungReads;
    return std::chrono::duration<double>(now).count();
}

- (int)processIdentifier {
    return fakes::kOwnProcess;
}

- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version {
    return version.majorVersion <= fakes::mac().systemVersion;
}

@end

@implementation NSTask
@synthesize executableURL = executableURL_;
@synthesize arguments = arguments_;

- (instancetype)init {
    return [super init];
}

- (BOOL)launchAndReturnError:(NSError**)error {
    auto line = "launch " + fakes::toText(executableURL_.path);
    for (NSString* argument in arguments_)
        line += " " + fakes::toText(argument);
    fakes::mac().record(line);
    return YES;
}

@end
