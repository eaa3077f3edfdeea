#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
API_AVAILABLE_MAC(12.3)
@interface SCWindow : NSObject
- (instancetype)init NS_UNAVAILABLE;
@end

API_AVAILABLE_MAC(12.3)
@interface SCDisplay : NSObject
@property(readonly) CGDirectDisplayID displayID;
@property(readonly) NSInteger width;
@property(readonly) NSInteger height;
- (instancetype)init NS_UNAVAILABLE;
@end

API_AVAILABLE_MAC(12.3)
@interface SCShareableContent : NSObject
+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludeDesktopWindows
                               onScreenWindowsOnly:(BOOL)onScreenWindowsOnly
                                 completionHandler:
                                     (void (^)(SCShareableContent* _Nullable shareableContent,
                                               NSError* _Nullable error))completionHandler;
@property(readonly) NSArray<SCDisplay*>* displays;
- (instancetype)init NS_UNAVAILABLE;
@end

API_AVAILABLE_MAC(12.3)
@interface SCContentFilter : NSObject
- (instancetype)initWithDisplay:(SCDisplay*)display excludingWindows:(NSArray<SCWindow*>*)excluded;
@end

API_AVAILABLE_MAC(12.3)
@interface SCStreamConfiguration : NSObject
@property size_t width;
@property size_t height;
@property BOOL scalesToFit;
@property BOOL showsCursor;
@end

API_AVAILABLE_MAC(14.0)
@interface SCScreenshotManager : NSObject
- (instancetype)init NS_UNAVAILABLE;
+ (void)captureImageWithFilter:(SCContentFilter*)contentFilter
                 configuration:(SCStreamConfiguration*)config
             completionHandler:(nullable void (^)(CGImageRef _Nullable sampleBuffer,
                                                  NSError* _Nullable error))completionHandler;
@end

NS_ASSUME_NONNULL_END
