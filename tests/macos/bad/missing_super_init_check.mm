// EXPECT none: the result of [super init] used without a test for nil
#import <AppKit/AppKit.h>
@interface C : NSObject
- (instancetype)initWithN:(int)n;
@end
@implementation C {
    int n_;
}
- (instancetype)initWithN:(int)n {
    self = [super init];
    n_ = n;
    return self;
}
@end
