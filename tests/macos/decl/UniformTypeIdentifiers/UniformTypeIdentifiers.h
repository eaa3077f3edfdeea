#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
API_AVAILABLE_MAC(11.0)
@interface UTType : NSObject <NSCopying>
@end

FOUNDATION_EXPORT UTType* const UTTypeApplication API_AVAILABLE_MAC(11.0);
NS_ASSUME_NONNULL_END
