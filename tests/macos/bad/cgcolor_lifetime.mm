// EXPECT none: a CGColor taken from a temporary NSColor and used after it
#import <AppKit/AppKit.h>
void f(CALayer* l) {
    CGColorRef c = [NSColor colorWithWhite:0 alpha:1].CGColor;
    [NSColor.clearColor set];
    l.backgroundColor = c;
}
