// EXPECT compile: property 'levl' not found
#import <AppKit/AppKit.h>
void f(NSWindow* w) {
    w.levl = 3;
}
