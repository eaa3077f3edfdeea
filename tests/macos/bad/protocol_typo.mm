// EXPECT sources: windowWillClos:] is declared nowhere
#import <AppKit/AppKit.h>
@interface D : NSObject <NSWindowDelegate>
@end
@implementation D
- (void)windowWillClos:(NSNotification*)n {
    (void)n;
}
@end
