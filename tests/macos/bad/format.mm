// EXPECT compile: format
#import <AppKit/AppKit.h>
void f(NSInteger n) {
    NSLog(@"%d", n);
}
