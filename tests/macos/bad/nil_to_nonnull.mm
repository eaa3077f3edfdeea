// EXPECT compile: null passed to a callee that requires a non-null argument
#import <AppKit/AppKit.h>
void f(NSWindow* w) {
    w.title = nil;
    [NSColor.clearColor set];
    [NSBundle bundleWithURL:nil];
}
