// EXPECT sources: the block holds the reference draw
#import <AppKit/AppKit.h>
#include <functional>
NSImage* f(std::function<bool(NSRect)> const& draw) {
    return [NSImage imageWithSize:NSMakeSize(18, 18)
                          flipped:NO
                   drawingHandler:^BOOL(NSRect r) {
                     return draw(r);
                   }];
}
