// EXPECT compile: conflicting return type
#import <AppKit/AppKit.h>
@interface V : NSView
@end
@implementation V
- (int)acceptsFirstMouse:(NSEvent*)e {
    (void)e;
    return 1;
}
@end
