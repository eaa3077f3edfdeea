// EXPECT compile: assigning retained object to weak property
#import <AppKit/AppKit.h>
@interface D : NSObject <NSWindowDelegate>
@end
@implementation D
@end
void f(NSWindow* w) {
    w.delegate = [[D alloc] init];
}
