// EXPECT compile: cannot initialize a parameter of type 'NSURL * _Nonnull'
#import <AppKit/AppKit.h>
void f(NSWorkspace* w) {
    [w openURL:@"https://example.com"];
}
