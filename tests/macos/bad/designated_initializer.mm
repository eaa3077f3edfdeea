// EXPECT compile: designated initializer
#import <AppKit/AppKit.h>
@interface V : NSView
@end
@implementation V
- (instancetype)initWithFrame:(NSRect)f {
    (void)f;
    if ((self = [super init])) {
    }
    return self;
}
@end
