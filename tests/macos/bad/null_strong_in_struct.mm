// EXPECT compile: called object type
#import <AppKit/AppKit.h>
void f(NSView* v) {
    v.wantsLayer(YES);
}
