// EXPECT compile: no known class method for selector 'labelWithText:'
#import <AppKit/AppKit.h>
id f() {
    return [NSTextField labelWithText:@"x"];
}
