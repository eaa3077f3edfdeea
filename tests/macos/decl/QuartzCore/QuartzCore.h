#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
@interface CALayer : NSObject
@property CGFloat cornerRadius;
@property CGFloat borderWidth;
@property(nullable) CGColorRef borderColor;
@property(nullable) CGColorRef backgroundColor;
@property BOOL masksToBounds;
@property(nullable) CGColorRef shadowColor;
@property float shadowOpacity;
@property CGSize shadowOffset;
@property CGFloat shadowRadius;
@end

@interface CATransaction : NSObject
+ (void)flush;
@end

NS_ASSUME_NONNULL_END
