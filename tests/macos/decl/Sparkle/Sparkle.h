#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
@protocol SPUUpdaterDelegate <NSObject>
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@end

@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:
                         (nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
- (IBAction)checkForUpdates:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
