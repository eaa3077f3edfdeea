#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>

NS_ASSUME_NONNULL_BEGIN
@class NSCoder, NSError, NSString;
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
@interface NSObject <NSObject>
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
@property(readonly) long long longLongValue;
@end

@interface NSData : NSObject <NSCopying>
@end

@interface NSError : NSObject <NSCopying>
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSURL : NSObject <NSCopying>
@end

@interface NSFileManager : NSObject
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
+ (nullable instancetype)bundleWithURL:(NSURL*)url;
@end

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSDictionary<NSString*, NSString*>* environment;
@end

@interface NSAppleEventDescriptor : NSObject <NSCopying>
@end

@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithSource:(NSString*)source NS_DESIGNATED_INITIALIZER;
- (nullable NSAppleEventDescriptor*)executeAndReturnError:
    (NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end

typedef NSString* NSRunLoopMode;
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

typedef NSString* NSAttributedStringKey;
FOUNDATION_EXPORT void NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));
NS_ASSUME_NONNULL_END
