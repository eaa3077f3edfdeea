#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>

NS_ASSUME_NONNULL_BEGIN
@class NSCoder, NSDate, NSError, NSString, NSURL;
typedef struct _NSZone NSZone;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
    return CGPointMake(x, y);
}
static inline NSSize NSMakeSize(CGFloat w, CGFloat h) {
    return CGSizeMake(w, h);
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
    return CGRectMake(x, y, w, h);
}

@protocol NSObject
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
@end

NS_ROOT_CLASS
@interface NSObject <NSObject> {
    Class isa;
}
- (instancetype)init NS_DESIGNATED_INITIALIZER;
+ (instancetype)alloc;
- (void)dealloc;
+ (Class)class;
@end

@protocol NSCopying
- (id)copyWithZone:(nullable NSZone*)zone;
@end

@protocol NSCoding
- (void)encodeWithCoder:(NSCoder*)coder;
- (nullable instancetype)initWithCoder:(NSCoder*)coder;
@end

@protocol NSSecureCoding <NSCoding>
@end

typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)len;
@end

@interface NSCoder : NSObject
@end

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying, NSSecureCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithBytes:(void const*)bytes
                                length:(NSUInteger)len
                              encoding:(NSStringEncoding)encoding;
+ (nullable instancetype)stringWithUTF8String:(char const*)nullTerminatedCString;
@property(nullable, readonly) const char* UTF8String NS_RETURNS_INNER_POINTER;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(ObjectType const _Nonnull[_Nullable])objects
                           count:(NSUInteger)cnt;
- (BOOL)isEqualToArray:(NSArray<ObjectType>*)otherArray;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)anObject;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType>
    : NSObject <NSCopying, NSFastEnumeration>
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
+ (instancetype)dictionaryWithObjects:(ObjectType const _Nonnull[_Nullable])objects
                              forKeys:(KeyType<NSCopying> const _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
@end

@interface NSValue : NSObject <NSCopying>
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
@property(readonly) long long longLongValue;
@end

typedef NSUInteger NSDataWritingOptions;
@interface NSData : NSObject <NSCopying>
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@property(readonly) const void* bytes;
@property(readonly) NSUInteger length;
- (BOOL)writeToURL:(NSURL*)url
           options:(NSDataWritingOptions)writeOptionsMask
             error:(NSError* _Nullable* _Nullable)errorPtr;
@end

@interface NSDate : NSObject <NSCopying>
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;
FOUNDATION_EXPORT NSErrorDomain const NSPOSIXErrorDomain;
@interface NSError : NSObject <NSCopying>
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id>*)dict;
@property(readonly, copy) NSString* localizedDescription;
@end

typedef NSString* NSURLResourceKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLCreationDateKey;
@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)URLString;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDir;
@property(nullable, readonly, copy) NSString* path;
- (BOOL)getResourceValue:(out id _Nullable* _Nonnull)value
                  forKey:(NSURLResourceKey)key
                   error:(out NSError* _Nullable* _Nullable)error;
@end

typedef NSString* NSFileAttributeKey;
FOUNDATION_EXPORT NSFileAttributeKey const NSFilePosixPermissions;
typedef NS_OPTIONS(NSUInteger, NSDirectoryEnumerationOptions) {
    NSDirectoryEnumerationSkipsHiddenFiles = 1UL << 2
};
@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
@property(readonly, copy) NSURL* homeDirectoryForCurrentUser API_AVAILABLE_MAC(10.12);
- (BOOL)createDirectoryAtURL:(NSURL*)url
    withIntermediateDirectories:(BOOL)createIntermediates
                     attributes:(nullable NSDictionary<NSFileAttributeKey, id>*)attributes
                          error:(NSError* _Nullable* _Nullable)error;
- (BOOL)createFileAtPath:(NSString*)path
                contents:(nullable NSData*)data
              attributes:(nullable NSDictionary<NSFileAttributeKey, id>*)attr;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (nullable NSArray<NSURL*>*)contentsOfDirectoryAtURL:(NSURL*)url
                           includingPropertiesForKeys:(nullable NSArray<NSURLResourceKey>*)keys
                                              options:(NSDirectoryEnumerationOptions)mask
                                                error:(NSError* _Nullable* _Nullable)error;
- (BOOL)removeItemAtURL:(NSURL*)URL error:(NSError* _Nullable* _Nullable)error;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (void)setObject:(nullable id)value forKey:(NSString*)defaultName;
- (nullable NSString*)stringForKey:(NSString*)defaultName;
- (NSInteger)integerForKey:(NSString*)defaultName;
- (BOOL)boolForKey:(NSString*)defaultName;
- (void)setInteger:(NSInteger)value forKey:(NSString*)defaultName;
- (void)setBool:(BOOL)value forKey:(NSString*)defaultName;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
+ (nullable instancetype)bundleWithURL:(NSURL*)url;
@property(readonly, copy) NSString* bundlePath;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

struct NSOperatingSystemVersion {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
};
typedef struct NSOperatingSystemVersion NSOperatingSystemVersion;

@interface NSProcessInfo : NSObject
@property(readonly) NSTimeInterval systemUptime;
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSDictionary<NSString*, NSString*>* environment;
@property(readonly) int processIdentifier;
- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version;
@end

@interface NSTask : NSObject
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@property(nullable, copy) NSURL* executableURL API_AVAILABLE_MAC(10.13);
@property(nullable, copy) NSArray<NSString*>* arguments;
- (BOOL)launchAndReturnError:(out NSError* _Nullable* _Nullable)error API_AVAILABLE_MAC(10.13);
@end

@interface NSAppleEventDescriptor : NSObject <NSCopying>
@end

@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithSource:(NSString*)source NS_DESIGNATED_INITIALIZER;
- (nullable NSAppleEventDescriptor*)executeAndReturnError:
    (NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end

typedef NSString* NSRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSDefaultRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSRunLoopCommonModes;
@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block API_AVAILABLE_MAC(10.12);
- (void)invalidate;
@end

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* mainRunLoop;
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
- (void)performInModes:(NSArray<NSRunLoopMode>*)modes
                 block:(void (^)(void))block API_AVAILABLE_MAC(10.12);
@end

@interface NSNotification : NSObject <NSCopying>
@end

typedef NSString* NSNotificationName;
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(nullable NSNotificationName)aName
             object:(nullable id)anObject;
@end

typedef NSString* NSAttributedStringKey;
FOUNDATION_EXPORT void NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));
NS_ASSUME_NONNULL_END
