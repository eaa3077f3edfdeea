// EXPECT compile: use of undeclared identifier
#import <AppKit/AppKit.h>
void f(NSWindow* w) {
    w.styleMask = NSWindowStyleMaskFullSizeContent;
}
