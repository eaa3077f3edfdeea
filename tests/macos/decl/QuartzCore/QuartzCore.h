#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
@interface CALayer : NSObject
@property(nullable) CGColorRef backgroundColor;
@end

NS_ASSUME_NONNULL_END
