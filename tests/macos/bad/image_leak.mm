// EXPECT analyze: leak
#import <AppKit/AppKit.h>
NSImage* f(CGImageRef w) {
    CGImageRef c = CGImageCreateWithImageInRect(w, CGRectMake(0, 0, 1, 1));
    if (!c) return nil;
    return [[NSImage alloc] initWithCGImage:c size:NSMakeSize(1, 1)];
}
