// EXPECT sources: [V update] may be a name of the system's own
#import <AppKit/AppKit.h>
@interface V : NSView
- (void)update;
@end
@implementation V
- (void)update {
    self.needsDisplay = YES;
}
@end
