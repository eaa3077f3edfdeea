// EXPECT none: a local target that no one keeps
#import <AppKit/AppKit.h>
@interface D : NSObject
- (void)go;
@end
@implementation D
- (void)go {
}
@end
NSMenuItem* f() {
    D* d = [[D alloc] init];
    NSMenuItem* i = [[NSMenuItem alloc] initWithTitle:@"x" action:@selector(go) keyEquivalent:@""];
    i.target = d;
    return i;
}
