// EXPECT compile: only available on macOS 15.2
#import <AppKit/AppKit.h>
@interface NSWindow (Later)
- (void)doLater __attribute__((availability(macos, introduced = 15.2)));
@end
void f(NSWindow* w) {
    [w doLater];
}
