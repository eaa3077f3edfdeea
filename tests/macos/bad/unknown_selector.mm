// EXPECT compile: declares the selector 'orderFrontRegardles'
#import <AppKit/AppKit.h>
void f(NSWindow* w) {
    [w orderFrontRegardles];
}
