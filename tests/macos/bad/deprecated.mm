// EXPECT compile: deprecated
#import <AppKit/AppKit.h>
@interface NSImage (Old)
- (void)lockFocus __attribute__((availability(macos, introduced = 10.0, deprecated = 14.0)));
@end
void f(NSImage* i) {
    [i lockFocus];
}
