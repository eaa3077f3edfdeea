// EXPECT analyze: not owned
#import <AppKit/AppKit.h>
void f(NSImage* i) {
    CGImageRef c = [i CGImageForProposedRect:nullptr context:nil hints:nil];
    if (c != nullptr) CFRelease(c);
}
